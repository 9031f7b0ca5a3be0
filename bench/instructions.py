"""Counts the instructions of fifteen works, and compares them with the figures of instructions.tsv.

instructions.py PROGRAM          fails where a work takes more than 3 percent more than its figure
instructions.py PROGRAM --write  writes the figures anew

Counts do not depend on how busy the machine is. They depend on the compiler and the libraries, so they are compared only
on the release of Debian that the figures name. The forms of memcpy that not every processor has are switched off.
"""

import os
import platform
import re
import subprocess
import sys
from pathlib import Path

FIGURES = Path(__file__).with_name("instructions.tsv")
ALLOWED = 1.03

# How often each work is done: so many times, and twice as many, whose difference counts. Long arrays are not among them:
# how often a growing one is moved depends on what happens to lie behind it.
WORKS = {
    "delivery/1_observer": 100,
    "delivery/100_observers": 5,
    "notifications/read_whole": 50,
    "strings/to_cocoa/ascii/20": 200,
    "strings/to_host/ascii/20": 200,
    "scalars/to_cocoa/double": 200,
    "scalars/to_host/int": 200,
    "dates/to_cocoa": 50,
    "dates/to_host": 50,
    "trees/to_cocoa/7_nodes": 20,
    "trees/to_host/7_nodes": 20,
    "dictionaries/to_cocoa/1000": 3,
    "dictionaries/to_host/1000": 3,
    "class_rows/109_QCCompositionRepository": 200,
    "class_rows/unknown": 200,
}


def count(program, work, times):
    """The instructions of a whole process that does the work so many times."""
    done = subprocess.run(
        ["setarch", "--addr-no-randomize", "valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
         program, "--run", work, "--times", str(times)],
        env=os.environ | {"GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-AVX,-ERMS,-FSRM"},
        stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
    collected = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or not collected:
        sys.exit(f"{work}: {done.stderr}")
    return int(collected.group(1))


def instructions(program, work):
    times = WORKS[work]
    return (count(program, work, 2 * times) - count(program, work, times)) / times


def release():
    system = platform.freedesktop_os_release()
    return f"{system['ID']}-{system.get('VERSION_ID')}"


def read_figures():
    """The figures by work, and the release that they hold on."""
    header, *lines = FIGURES.read_text(encoding="utf-8").splitlines()
    return {work: float(figure) for work, figure in (line.split("\t") for line in lines)}, header.split(" on ")[1]


def write_figures(counted):
    lines = [f"work\tinstructions on {release()}"] + [f"{work}\t{figure:.0f}" for work, figure in counted.items()]
    FIGURES.write_text("\n".join(lines) + "\n", encoding="utf-8")


def compare(counted):
    """Prints the works and returns how many take too many instructions."""
    figures, _ = read_figures()
    too_many = 0
    for work, found in counted.items():
        ratio = found / figures[work]
        too_many += ratio > ALLOWED
        print(f"{work:45} {found:12.0f} {figures[work]:12.0f} {ratio:7.3f}{'  too many' if ratio > ALLOWED else ''}")
    return too_many


def main():
    program = sys.argv[1]
    _, counted_on = read_figures()
    if sys.argv[2:] != ["--write"] and release() != counted_on:
        print(f"instructions: not compared, the figures are for {counted_on}, and this is {release()}")
        return
    counted = {work: instructions(program, work) for work in WORKS}
    if sys.argv[2:] == ["--write"]:
        write_figures(counted)
    elif compare(counted):
        sys.exit("instructions: more than 3 percent above the figures")


if __name__ == "__main__":
    main()

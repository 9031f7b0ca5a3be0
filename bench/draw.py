#!/usr/bin/env python3
"""Draws measurements: a picture of all ratios, and the table of docs/performance.md.

usage: draw.py RESULTS.json FOLDER
writes FOLDER/performance.svg, and the table between the marks in FOLDER/performance.md
"""

import json
import math
import re
import sys
from html import escape
from pathlib import Path

ROW, HEAD, LEFT, WIDTH, RIGHT = 16, 64, 340, 460, 70
LOWEST, HIGHEST = 0.5, 8.0
LINES = [0.5, 1, 1.1, 1.5, 2, 4, 8]
GOOD, MISSED, PLAIN, GRID, INK = "#2e7d32", "#c62828", "#455a64", "#dddddd", "#222222"
MARKS = re.compile(r"(<!-- table -->\n).*(<!-- end of table -->)", re.DOTALL)
UNITS = {
    "nanoseconds": [(1e6, "ms"), (1e3, "µs"), (1, "ns")],
    "bytes": [(1 << 20, "MiB"), (1 << 10, "KiB"), (1, "B")],
}


def x(ratio):
    """Where a ratio lies: the scale is logarithmic, and ends where the picture ends."""
    inside = min(max(ratio, LOWEST), HIGHEST)
    return LEFT + WIDTH * math.log(inside / LOWEST) / math.log(HIGHEST / LOWEST)


def title(work):
    against = "" if work["against"] == "floor" else f" ({work['against']})"
    return work["name"] + against


def misses(work):
    return "target" in work and work["ratio"] > work["target"]


def color(work):
    if "target" not in work:
        return PLAIN
    return MISSED if misses(work) else GOOD


def line(x1, y1, x2, y2, stroke, width=1):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{stroke}" stroke-width="{width}"/>'


def text(at, y, words, anchor="start", fill=INK):
    return f'<text x="{at:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{fill}">{escape(words)}</text>'


def row(work, y):
    parts = [
        text(LEFT - 10, y + 4, title(work), "end"),
        line(x(work["low"]), y, x(work["high"]), y, color(work), 3),
        f'<circle cx="{x(work["ratio"]):.1f}" cy="{y:.1f}" r="4" fill="{color(work)}"/>',
        text(LEFT + WIDTH + 10, y + 4, f"{work['ratio']:.2f}", fill=color(work)),
    ]
    if "target" in work:
        parts.append(line(x(work["target"]), y - 6, x(work["target"]), y + 6, INK, 2))
    return parts


def picture(works):
    height = HEAD + ROW * len(works) + 10
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{LEFT + WIDTH + RIGHT}" height="{height}"'
        ' font-family="sans-serif" font-size="11">',
        '<rect width="100%" height="100%" fill="white"/>',
        text(10, 18, "The library's cost as a multiple of its floor's: median, and from the 10th to the 90th of 100"),
        text(10, 34, "green: within its target, which is the black mark; red: beyond it; grey: without one"),
    ]
    for ratio in LINES:
        parts.append(line(x(ratio), HEAD - 8, x(ratio), height - 6, INK if ratio == 1 else GRID))
        parts.append(text(x(ratio), HEAD - 12, f"{ratio:g}", "middle"))
    for number, work in enumerate(works):
        parts += row(work, HEAD + ROW * (number + 0.5))
    return "\n".join(parts) + "\n</svg>\n"


def amount(value, unit):
    factor, name = next((each for each in UNITS[unit] if value >= each[0]), UNITS[unit][-1])
    number = value / factor
    return f"{number:.{2 if number < 10 else 1 if number < 100 else 0}f} {name}"


def table(works):
    rows = ["| Work | Library | Floor | Ratio | 10 % to 90 % | Target |", "| :--- | ---: | ---: | ---: | ---: | ---: |"]
    for work in works:
        target = f"{work['target']:.2f}" if "target" in work else ""
        ratio = f"**{work['ratio']:.2f}**" if misses(work) else f"{work['ratio']:.2f}"
        rows.append(
            f"| {title(work)} | {amount(work['ours'], work['unit'])} | {amount(work['floor'], work['unit'])} "
            f"| {ratio} | {work['low']:.2f} to {work['high']:.2f} | {target} |"
        )
    return "\n".join(rows) + "\n"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    works = json.loads(Path(sys.argv[1]).read_text())["works"]
    folder = Path(sys.argv[2])
    (folder / "performance.svg").write_text(picture(works))
    page = folder / "performance.md"
    page.write_text(MARKS.sub(lambda found: found[1] + table(works) + found[2], page.read_text()))


if __name__ == "__main__":
    main()

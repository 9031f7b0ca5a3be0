"""Runs our programs and the peers' in turn, and prints and writes what they come to."""
import argparse
import contextlib
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BENCH = PROJECT / "build/bench"
PEERS = PROJECT / "build/peers"
RESULTS = BENCH / "peers.json"
LIMIT = 300
# Under the daemon's folder: the name that it registers, in base 64.
REGISTERED = "NSMessagePort/names/R0ROQ1NlcnZlcg=="

OUR_WORKS = "|".join([
    "delivery/[0-9]+_observer",
    "strings/to_(cocoa|host)/(ascii|other)/(20|100|10000)$",
    "scalars/(to_cocoa/int64|to_host/long)$",
    "arrays/to_(cocoa|host)/(int64|numbers|strings)/1000$",
    "dictionaries/to_(cocoa|host)/1000$",
])


class Program:
    def __init__(self, command, packages=(), daemon=None):
        self.command = [str(word) for word in command]
        self.packages = packages
        self.daemon = daemon
        self.failure = None


PROGRAMS = {
    "ours": Program([PEERS / "ours_post"]),
    "sigc": Program([PEERS / "peer_sigc"], ["libsigc++-2.0-dev"]),
    "poco": Program([PEERS / "peer_poco"], ["libpoco-dev"]),
    "jsc": Program([PEERS / "peer_jsc"], ["libjavascriptcoregtk-4.1-dev"]),
    "pygobject": Program([sys.executable, "-B", PROJECT / "bench/peers/gobject_signal.py"], ["python3-gi"]),
    "ours between processes": Program([PEERS / "ours_processes"], daemon="gdnc"),
    "gnustep": Program([PEERS / "peer_gnustep"], daemon="gdnc"),
    "sd-bus": Program([PEERS / "peer_sd_bus"], ["libsystemd-dev", "dbus-daemon"], daemon="dbus"),
}

NAMES = {
    "sigc": "libsigc++",
    "poco": "Poco",
    "jsc": "JavaScriptCore",
    "pygobject": "PyGObject",
    "gnustep": "GNUstep alone",
    "sd-bus": "sd-bus",
}


def rows():
    """Of each row: the work as it is shown, our figure's name, the peer, its figure's name."""
    yield "post, dictionary converted and read", "ours/post/read_whole", "pygobject", "pygobject/post/converted"
    yield "post, dictionary read; peer passes it as it is", "ours/post/read_whole", "pygobject", \
        "pygobject/post/by_reference"
    for way, ours, theirs in (("out", "to_cocoa", "to"), ("back", "to_host", "from")):
        for kind in ("ascii", "other"):
            for units in (20, 100, 10000):
                yield f"string of {units}, {kind}, {way}", f"strings/{ours}/{kind}/{units}", \
                    "jsc", f"jsc/{theirs}/{kind}/{units}"
        number = "int64" if way == "out" else "long"
        numbers = "int64" if way == "out" else "numbers"
        yield f"integer, {way}", f"scalars/{ours}/{number}", "jsc", f"jsc/{theirs}/number"
        yield f"array of 1000 integers, {way}", f"arrays/{ours}/{numbers}/1000", "jsc", \
            f"jsc/{theirs}/numbers/1000"
        yield f"array of 1000 strings, {way}", f"arrays/{ours}/strings/1000", "jsc", \
            f"jsc/{theirs}/strings/1000"
        yield f"dictionary of 1000, {way}", f"dictionaries/{ours}/1000", "jsc", \
            f"jsc/{theirs}/dictionary/1000"
    for count in (1, 10, 100):
        ours = f"delivery/{count}_observer" + ("s" if count > 1 else "")
        for peer in ("sigc", "poco"):
            yield f"post to {count}", ours, peer, f"{peer}/delivery/{count}"
            yield f"post to {count}, ours without handlers", ours + "_unhandled", peer, f"{peer}/delivery/{count}"
    for peer in ("sd-bus", "gnustep"):
        yield "between processes, each of 2000", "ours/many", peer, f"{peer}/many"
        yield "between processes, there and back", "ours/round_trip", peer, f"{peer}/round_trip"


@contextlib.contextmanager
def running(daemon):
    """The daemon, known by nobody else; gives what a client's environment needs."""
    if daemon is None:
        yield {}
        return
    folder = tempfile.mkdtemp(prefix="qzl-peers-", dir="/tmp")
    if daemon == "gdnc":
        command, sign = ["gdnc", "--no-fork"], pathlib.Path(folder, REGISTERED)
        own, clients = {"TEMP": folder, "LD_PRELOAD": str(BENCH / "libmended_daemon.so")}, {"TEMP": folder}
    else:
        sign = pathlib.Path(folder, "bus")
        command, own = ["dbus-daemon", "--session", "--nofork", f"--address=unix:path={sign}"], {}
        clients = {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={sign}"}
    try:
        process = subprocess.Popen(command, env=os.environ | own, stderr=subprocess.DEVNULL)
        try:
            end = time.monotonic() + 30
            while not sign.exists():
                if process.poll() is not None or time.monotonic() > end:
                    raise RuntimeError(f"{command[0]} does not start")
                time.sleep(0.02)
            yield clients
        finally:
            process.kill()
            process.wait()
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def reason_not_to_run(program):
    for package in program.packages:
        status = subprocess.run(["dpkg-query", "--show", "--showformat=${db:Status-Status}", package],
                                capture_output=True, text=True, check=False)
        if status.stdout != "installed":
            return f"the package {package} is not installed"
    if not pathlib.Path(program.command[0]).exists():
        return "its program could not be built"
    return None


def run(program):
    """What the program measures, by name; fails as its program does."""
    with running(program.daemon) as environment:
        output = subprocess.run(program.command, env=os.environ | environment, capture_output=True, text=True,
                                timeout=LIMIT, check=True).stdout
    lines = [json.loads(line) for line in output.splitlines()]
    return {line["work"]: line["nanoseconds"] for line in lines}


def run_ours():
    """What our own measurements of these works give."""
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run([BENCH / "qzl_bench", "--filter", f"^({OUR_WORKS})", "--json", file.name], check=True,
                       stdout=subprocess.DEVNULL)
        return {work["name"]: work["ours"] for work in json.load(file)["works"]}


def measure(rounds):
    """One dictionary a round."""
    results = []
    for number in range(rounds):
        print(f"peers: round {number + 1} of {rounds}", file=sys.stderr)
        result = {}
        if number % 2 == 0:
            result |= run_ours()
        for name, program in list(PROGRAMS.items())[::1 if number % 2 == 0 else -1]:
            if program.failure:
                continue
            try:
                result |= run(program)
            except (OSError, RuntimeError, subprocess.SubprocessError) as error:
                if name.startswith("ours"):
                    raise
                program.failure = f"{error} {(getattr(error, 'stderr', None) or '').strip()}".strip()
        if number % 2 == 1:
            result |= run_ours()
        results.append(result)
    return results


def summary(results):
    for work, ours, peer, theirs in rows():
        row = {"work": work, "ours_name": ours, "peer": NAMES[peer]}
        both = [(result[ours], result[theirs]) for result in results if theirs in result]
        row["rounds"] = len(both)
        if PROGRAMS[peer].failure or not both:
            row["not_run"] = PROGRAMS[peer].failure or "it gave no such figure"
        else:
            ratios = [one / other for one, other in both]
            row |= {
                "ours": statistics.median(one for one, _ in both),
                "theirs": statistics.median(other for _, other in both),
                "ratio": statistics.median(ratios),
                "low": min(ratios),
                "high": max(ratios),
            }
        yield row


def shown(nanoseconds):
    for factor, unit in ((1e6, "ms"), (1e3, "µs"), (1, "ns")):
        if nanoseconds >= factor or factor == 1:
            number = nanoseconds / factor
            return f"{number:.{2 if number < 10 else 1 if number < 100 else 0}f} {unit}"


def print_table(table):
    print("| Work | Ours | Peer | Peer's | Ours / peer | Lowest, highest |\n| :--- | ---: | :--- | ---: | ---: | ---: |")
    for row in table:
        if "not_run" not in row:
            print(f"| {row['work']} | {shown(row['ours'])} | {row['peer']} | {shown(row['theirs'])} "
                  f"| {row['ratio']:.2f} | {row['low']:.2f}, {row['high']:.2f} |")
    for name, program in PROGRAMS.items():
        if program.failure:
            print(f"\nNot run: {NAMES.get(name, name)}: {program.failure}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rounds", type=int, default=5)
    rounds = max(parser.parse_args().rounds, 1)
    for program in PROGRAMS.values():
        program.failure = reason_not_to_run(program)
    table = list(summary(measure(rounds)))
    print_table(table)
    RESULTS.write_text(json.dumps({"rounds": rounds, "works": table}, indent=1) + "\n", encoding="utf-8")
    print(f"\npeers: the figures are in {RESULTS.relative_to(PROJECT)}", file=sys.stderr)


if __name__ == "__main__":
    main()

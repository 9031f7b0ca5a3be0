"""Holds the includes to the table of docs/architecture.md: a room includes itself and what its row names.

A row is `| room | what is in it | what it includes |`, each room in backticks: a folder or a file. The longest row that fits
a file is its own. "everything" includes every room.
"""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).parents[1]
HEADING = "| Room | What is in it | It includes |"
ROW = re.compile(r"\| `(?P<room>[^`]+)` \|[^|]*\|(?P<includes>[^|]*)\|$")


def read_rows():
    """Yields each room with its last column."""
    in_table = False
    for line in (ROOT / "docs/architecture.md").read_text(encoding="utf-8").splitlines():
        in_table = line == HEADING or in_table and line.startswith("|")
        row = ROW.match(line) if in_table else None
        if row:
            yield row["room"], row["includes"].strip()


def read_rooms():
    """What each room includes, by its name."""
    rows = dict(read_rows())
    rooms = {room: set(rows) if includes == "everything" else set(re.findall(r"`([^`]+)`", includes))
             for room, includes in rows.items()}
    for room, includes in rooms.items():
        for name in [room, *includes]:
            if not (ROOT / name).exists():
                sys.exit(f"rooms: docs/architecture.md names {name}, which is not there")
        for name in includes - rooms.keys():
            sys.exit(f"rooms: {room} may include {name}, which has no row")
    return rooms


def room_of(path, rooms):
    return max((room for room in rooms if path.startswith(room)), key=len, default=None)


def find_faults(rooms):
    listed = subprocess.run(["git", "ls-files", "*.h", "*.cpp", "*.mm"], cwd=ROOT, capture_output=True, text=True,
                            check=True)
    for path in listed.stdout.split():
        room = room_of(path, rooms)
        if room is None:
            yield f"{path}: is in no room"
            continue
        for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1):
            included = re.match(r'#\s*(?:include|import)\s+"([^"]+)"', line)
            if not included or included[1].endswith(".inc"):  # what the build generates
                continue
            other = room_of(included[1], rooms)
            if other is None:
                yield f"{path}:{number}: {included[1]} is in no room; includes begin at the root"
            elif other != room and other not in rooms[room]:
                yield f"{path}:{number}: {room} does not include {other}"


def main():
    rooms = read_rooms()
    faults = list(find_faults(rooms))
    if not rooms or faults:
        sys.exit("\n".join(faults) or "rooms: docs/architecture.md has no table")
    print(f"rooms: each of the {len(rooms)} includes what it may")


main()

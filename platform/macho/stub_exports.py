"""Makes a C++ table of what the stub libraries (.tbd files) export: stub_exports.py OUTPUT FILE...

Each row is a library by its install name, and a symbol that a program may take from it: its own, and those of the
libraries that it re-exports.
"""

import re
import sys


def list_after(key, text):
    """The entries of every list in brackets that follows the key."""
    entries = []
    for body in re.findall(rf"(?<![-\w]){key}:\s*\[(.*?)\]", text, re.DOTALL):
        entries += [entry.strip().strip("'") for entry in body.split(",") if entry.strip()]
    return entries


class Stub:
    def __init__(self, text):
        self.install_name = re.search(r"^install-name:\s*'(.*)'", text, re.MULTILINE).group(1)
        self.reexports = list_after("libraries", text)
        self.symbols = list_after("symbols", text) + list_after("weak-symbols", text)
        for name in list_after("objc-classes", text):
            self.symbols += [f"_OBJC_CLASS_$_{name}", f"_OBJC_METACLASS_$_{name}"]
        self.symbols += [f"_OBJC_EHTYPE_$_{name}" for name in list_after("objc-eh-types", text)]


def reachable(stub, stubs):
    """The symbols of the library and of those that it re-exports, as far as these have stubs."""
    symbols, waiting, seen = set(), [stub.install_name], set()
    while waiting:
        name = waiting.pop()
        if name in seen or name not in stubs:
            continue
        seen.add(name)
        symbols.update(stubs[name].symbols)
        waiting += stubs[name].reexports
    return symbols


def main():
    output, *files = sys.argv[1:]
    stubs = {}
    for path in files:
        with open(path, encoding="utf-8") as file:
            stub = Stub(file.read())
        stubs[stub.install_name] = stub
    rows = sorted((name, symbol) for name, stub in stubs.items() for symbol in reachable(stub, stubs))
    with open(output, "w", encoding="utf-8") as file:
        for name, symbol in rows:
            file.write(f'{{"{name}", "{symbol}"}},\n')


if __name__ == "__main__":
    main()

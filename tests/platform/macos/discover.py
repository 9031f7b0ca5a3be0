"""Prints the name of each test of the given modules, a line each; fails for a module that has none or is broken."""
import importlib
import sys
import unittest
from pathlib import Path

MODULES = sys.argv[1:]


def tests(suite):
    for item in suite:
        if isinstance(item, unittest.TestSuite):
            yield from tests(item)
        else:
            yield item.id()


sys.path.insert(0, str(Path(__file__).resolve().parent))
for module in MODULES:
    names = list(tests(unittest.defaultTestLoader.loadTestsFromModule(importlib.import_module(module))))
    if not names:
        sys.exit(f'{module} has no tests')
    print(*names, sep='\n')

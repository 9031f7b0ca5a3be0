"""Nothing in the dylib reveals where, from what files or by whom it was built."""
import getpass
import re
import unittest
from pathlib import Path

import dylib
from building import SOURCES

# With the characters that follow them in text, so that machine code does not match.
ABSOLUTE_PATH = re.compile(rb'/(?:[\w.+@~-]+/)+[\w.+@~-]+(?=[\0\s:;,"\'()])')
SOURCE_FILE = re.compile(rb'[\w/+-]{4,}\.(?:(?:cpp|cc|cxx|mm|hpp|hh|inc)(?![\w.])|[mchoa]\0)')


class Anonymity(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()

    def test_the_only_absolute_paths_are_the_libraries_install_names(self):
        allowed = {library.install_name for library in self.dylib.libraries}
        allowed.add(self.dylib.install_name.removeprefix('@rpath'))
        found = {path.decode() for path in ABSOLUTE_PATH.findall(self.dylib.bytes)}
        self.assertTrue(found)
        self.assertEqual(set(), found - allowed)

    def test_no_source_file_is_named(self):
        self.assertEqual([], SOURCE_FILE.findall(self.dylib.bytes))

    def test_neither_folders_nor_user_are_named(self):
        places = {SOURCES, self.dylib.path.resolve().parent, Path.home()}
        for place in places:
            with self.subTest(place):
                self.assertNotIn(str(place).encode(), self.dylib.bytes)
        self.assertNotIn(f'/{getpass.getuser()}/'.encode(), self.dylib.bytes)

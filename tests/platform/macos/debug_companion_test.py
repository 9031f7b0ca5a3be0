"""The debugging information beside the dylib."""
import os
import unittest

import dylib
import llvm_tools
from building import SOURCES

SOURCE_FOLDERS = ('frame', 'notifications', 'bridge')


def source_files():
    """The library's sources, relative to the repository."""
    return {str(path.relative_to(SOURCES))
            for folder in SOURCE_FOLDERS for path in (SOURCES / folder).rglob('*')
            if path.suffix in ('.cpp', '.mm')}


class DebugCompanion(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()
        self.companion = self.dylib.debug_companion
        self.assertTrue(self.companion.is_dir())

    def test_belongs_to_this_very_dylib(self):
        identity = llvm_tools.uuids(self.dylib.path)
        self.assertEqual(1, len(identity))
        self.assertEqual(identity, llvm_tools.uuids(self.companion))

    def test_describes_every_source_file(self):
        described = {os.path.normpath(unit.name) for unit in llvm_tools.compile_units(self.companion)}
        self.assertEqual(source_files(), described)

    def test_places_every_source_file_in_the_code(self):
        for unit in llvm_tools.compile_units(self.companion):
            with self.subTest(unit.name):
                self.assertIn('DW_AT_stmt_list', unit.attributes)
                self.assertTrue({'DW_AT_ranges', 'DW_AT_high_pc'} & unit.attributes.keys())

    def test_names_the_files_of_the_project_from_its_root(self):
        files = {name for name in llvm_tools.source_files(self.companion) if not name.startswith('/')}
        self.assertLessEqual(source_files(), {os.path.normpath(name) for name in files})
        self.assertEqual([], [name for name in sorted(files) if not (SOURCES / name).is_file()])

    def test_is_sound(self):
        llvm_tools.verify_debug_information(self.companion)

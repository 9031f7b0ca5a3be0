"""The program notifications-check: a file that every Mac of its processor runs, and that takes from the system no more
than is the same everywhere."""
import os
import re
import unittest
from pathlib import Path

import architectures
import building
import dylib
from imports_test import exported_by_the_system

SYSTEM_LIBRARY = '/usr/lib/libSystem.B.dylib'
FOUNDATION = '/System/Library/Frameworks/Foundation.framework/Versions/C/Foundation'
# Functions whose arguments and results have no constants and structures that differ between C libraries. Of dlopen's
# flags RTLD_NOW is the same, and so is what dladdr writes.
FROM_THE_SYSTEM_LIBRARY = {
    '__Unwind_Resume', '___bzero', '___stack_chk_fail', '___stack_chk_guard', '_abort', '_alarm', '_bzero', '_dladdr',
    '_dlerror', '_dlopen', '_dlsym', '_isatty', '_memcpy', '_memset', '_pthread_main_np', '_snprintf', '_strcmp',
    '_strlen', '_usleep', 'dyld_stub_binder',
}
# The libraries that Foundation exports again.
THROUGH_FOUNDATION = {
    FOUNDATION, '/usr/lib/libobjc.A.dylib',
    '/System/Library/Frameworks/CoreFoundation.framework/Versions/A/CoreFoundation',
}


def program():
    return dylib.Dylib(os.environ['QZL_CHECK'])


class CheckProgram(unittest.TestCase):
    def setUp(self):
        self.program = program()

    def test_is_a_position_independent_main_executable(self):
        header = self.program.header
        self.assertEqual('EXECUTE', header['filetype'])
        self.assertIn('PIE', header['flags'])
        self.assertEqual(1, len(self.program.commands('LC_MAIN')))

    def test_is_for_the_same_systems_as_the_dylib(self):
        kind, expected = architectures.under_test().oldest_macos
        fields = self.program.commands(kind)[0].fields
        self.assertEqual(expected, {name: fields[name] for name in expected})

    def test_needs_no_library_that_the_dylib_does_without(self):
        own = {library.install_name for library in self.program.libraries}
        self.assertEqual(set(), own - {library.install_name for library in dylib.under_test().libraries})

    def test_exports_nothing_but_its_header(self):
        self.assertLessEqual(set(self.program.exports), {'__mh_execute_header'})

    def test_imports_only_what_the_system_exports(self):
        exported = exported_by_the_system()
        for symbol, library, _ in self.program.imports:
            with self.subTest(symbol):
                home = exported[symbol][0]
                if library == FOUNDATION:
                    self.assertIn(home, THROUGH_FOUNDATION)

    def test_calls_of_the_c_library_only_what_is_the_same_everywhere(self):
        found = {symbol for symbol, library, _ in self.program.imports if library == SYSTEM_LIBRARY}
        self.assertTrue(found)
        self.assertEqual(set(), found - FROM_THE_SYSTEM_LIBRARY)

    def test_is_signed_where_the_processor_asks_for_it(self):
        self.assertEqual(architectures.under_test().signed, bool(self.program.commands('LC_CODE_SIGNATURE')))

    def test_names_no_folder_that_it_was_built_in(self):
        for place in {building.SOURCES, self.program.path.resolve().parent, Path.home()}:
            with self.subTest(place):
                self.assertNotIn(str(place).encode(), self.program.bytes)

    def test_looks_for_each_function_and_class_that_the_dylib_takes_of_the_frameworks(self):
        text = (building.SOURCES / 'check/check_library.mm').read_text(encoding='utf-8')
        named = set(re.findall(r'\w+', ' '.join(re.findall(r'@"([^"]*)"', text))))
        prefixes = ('_CF', '_CT', '_FS', '_NS', '_kCF')
        classes = '_OBJC_CLASS_$_'
        wanted = {symbol.removeprefix(classes) for symbol, _, _ in dylib.under_test().imports if symbol.startswith(classes)}
        wanted |= {symbol[1:] for symbol, _, _ in dylib.under_test().imports if symbol.startswith(prefixes)}
        # The frameworks that may be missing have facts of their own.
        self.assertEqual(set(), wanted - named - {'DRNotificationCenter', 'IMService'})
        self.assertGreater(len(wanted), 50)

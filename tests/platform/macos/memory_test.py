"""How the dylib's memory is protected, and that loading it runs none of its code."""
import unittest

import architectures
import dylib

# Kinds of sections whose contents the loader calls, and names that belong to such code.
INITIALISERS = ['S_MOD_INIT_FUNC_POINTERS', 'S_MOD_TERM_FUNC_POINTERS', 'S_INIT_FUNC_OFFSETS',
                'S_THREAD_LOCAL_INIT_FUNCTION_POINTERS']
INITIALISER_NAMES = ['__mod_init_func', '__mod_term_func', '__init_offsets', '__StaticInit', '__thread_init',
                     '__constructor', '__destructor']


class Memory(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()

    def test_no_segment_is_both_writable_and_executable(self):
        self.assertTrue(self.dylib.segments)
        for segment in self.dylib.segments:
            for protection in (segment.protection, segment.maximum_protection):
                with self.subTest(segment.name):
                    self.assertRegex(protection, r'^[r-][w-][x-]$')
                    self.assertFalse('w' in protection and 'x' in protection, protection)

    def test_code_and_constants_are_read_only(self):
        text = next(segment for segment in self.dylib.segments if segment.name == '__TEXT')
        self.assertEqual(('r-x', 'r-x'), (text.protection, text.maximum_protection))

    def test_loader_changes_nothing_outside_the_data_segments(self):
        names = {'__DATA', architectures.under_test().constants}
        data = [segment for segment in self.dylib.segments if segment.name in names]
        self.assertEqual(len(names), len(data))
        self.assertTrue(self.dylib.fixed_up_addresses)
        self.assertEqual([], [hex(address) for address in sorted(self.dylib.fixed_up_addresses)
                              if not any(segment.address <= address <= segment.address + segment.size - 8
                                         for segment in data)])

    def test_constants_are_read_only_once_the_loader_has_changed_them(self):
        self.assertEqual({architectures.under_test().constants} - {'__DATA'},
                         {segment.name for segment in self.dylib.segments if 'SG_READ_ONLY' in segment.flags})

    def test_code_has_no_relocations(self):
        fields = self.dylib.commands('LC_DYSYMTAB')[0].fields
        self.assertEqual(('0', '0'), (fields['nextrel'], fields['nlocrel']))
        self.assertEqual({'0'}, {fields['nreloc'] for command in self.dylib.commands('LC_SEGMENT_64')
                                 for fields in command.sections})

    def test_no_code_runs_at_load_or_unload(self):
        self.assertEqual([], [section.name for section in self.dylib.sections
                              if section.kind in INITIALISERS or section.name in INITIALISER_NAMES])
        self.assertEqual([], self.dylib.commands('LC_ROUTINES', 'LC_ROUTINES_64'))

"""How the dylib's memory is protected, and that loading it runs none of its code."""
import unittest

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

    def test_loader_changes_nothing_outside_the_data_segment(self):
        data = next(segment for segment in self.dylib.segments if segment.name == '__DATA')
        self.assertTrue(self.dylib.fixed_up_addresses)
        self.assertEqual([], [hex(address) for address in sorted(self.dylib.fixed_up_addresses)
                              if not data.address <= address <= data.address + data.size - 8])

    def test_code_has_no_relocations(self):
        fields = self.dylib.commands('LC_DYSYMTAB')[0].fields
        self.assertEqual(('0', '0'), (fields['nextrel'], fields['nlocrel']))
        self.assertEqual({'0'}, {fields['nreloc'] for command in self.dylib.commands('LC_SEGMENT_64')
                                 for fields in command.sections})

    def test_no_code_runs_at_load_or_unload(self):
        self.assertEqual([], [section.name for section in self.dylib.sections
                              if section.kind in INITIALISERS or section.name in INITIALISER_NAMES])
        self.assertEqual([], self.dylib.commands('LC_ROUTINES', 'LC_ROUTINES_64'))

"""What the dylib shows of itself: one function."""
import unittest

import dylib

ENTRY_POINT = '_REALPluginMain'


class Exports(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()

    def test_hold_the_entry_point_alone(self):
        self.assertEqual([ENTRY_POINT], list(self.dylib.exports))

    def test_entry_point_is_a_function_of_the_code_section(self):
        address = self.dylib.exports[ENTRY_POINT]
        self.assertEqual(('__TEXT', '__text'), self.dylib.section_at(address))
        self.assertIn(address, self.dylib.function_starts)

    def test_symbol_table_defines_nothing_else(self):
        self.assertEqual([(ENTRY_POINT, 'T')], self.dylib.defined_symbols)

    def test_symbol_table_has_no_local_entries(self):
        fields = self.dylib.commands('LC_DYSYMTAB')[0].fields
        self.assertEqual(('0', '1'), (fields['nlocalsym'], fields['nextdefsym']))

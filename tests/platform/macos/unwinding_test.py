"""Exceptions can pass through every function of the dylib."""
import bisect
import unittest

import architectures
import dylib

# An entry's encoding: how the frame is laid out, and whether a personality and its data go with the function.
MODE_MASK = 0x0F000000
DWARF_OFFSET_MASK = 0x00FFFFFF
HAS_LSDA = 0x40000000
PERSONALITY_MASK, PERSONALITY_SHIFT = 0x30000000, 28

OBJECTIVE_C, CPLUSPLUS = '___objc_personality_v0', '___gxx_personality_v0'

# What only a function with handlers or cleanups calls, and the personalities with which it is called.
TELLTALE_CALLS = [
    ('__Unwind_Resume', {OBJECTIVE_C, CPLUSPLUS}),
    ('_objc_begin_catch', {OBJECTIVE_C}),
    ('___cxa_end_catch', {CPLUSPLUS}),
]


class Unwinding(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()
        self.starts = self.dylib.function_starts
        self.entries = sorted(self.dylib.unwind.entries)
        self.entry_addresses = [entry.function for entry in self.entries]
        self.assertTrue(self.starts)

    def encoding(self, address):
        """The encoding for the address: neighbours that are encoded alike share an entry."""
        index = bisect.bisect_right(self.entry_addresses, address) - 1
        return self.entries[index].encoding if index >= 0 else 0

    def personality(self, address):
        """The name of the function's personality; None for a function without one."""
        number = (self.encoding(address) & PERSONALITY_MASK) >> PERSONALITY_SHIFT
        return self.dylib.symbol_at(self.dylib.unwind.personalities[number]) if number else None

    def function_of(self, address):
        return self.starts[bisect.bisect_right(self.starts, address) - 1]

    def test_is_described_for_every_function(self):
        modes = architectures.under_test().modes
        self.assertEqual([], [hex(start) for start in self.starts if self.encoding(start) & MODE_MASK not in modes])

    def test_covers_the_whole_code_section(self):
        text = self.dylib.section('__TEXT', '__text')
        self.assertLessEqual(self.starts[0], text.address + 15)
        self.assertEqual([], [hex(start) for start in self.starts
                              if not text.address <= start < text.address + text.size])
        self.assertLessEqual(self.entry_addresses[0], text.address)

    def test_entries_begin_where_functions_begin(self):
        self.assertLessEqual(set(self.entry_addresses), set(self.starts))

    def test_frames_that_need_dwarf_have_it(self):
        for start in self.starts:
            encoding = self.encoding(start)
            if encoding & MODE_MASK == architectures.under_test().dwarf_mode:
                with self.subTest(hex(start)):
                    self.assertIn(encoding & DWARF_OFFSET_MASK, self.dylib.dwarf_unwind_ranges)
                    first, end = self.dylib.dwarf_unwind_ranges[encoding & DWARF_OFFSET_MASK]
                    self.assertEqual(start, first)
                    self.assertLess(first, end)

    def test_dwarf_frames_belong_to_functions(self):
        self.assertEqual([], [hex(first) for first, _ in self.dylib.dwarf_unwind_ranges.values()
                              if first not in self.starts])

    def test_dwarf_is_there_only_for_functions(self):
        self.assertEqual(bool(self.dylib.dwarf_unwind_ranges),
                         self.dylib.section('__TEXT', '__eh_frame') is not None)

    def test_personality_and_handler_table_come_together(self):
        tables = self.dylib.section('__TEXT', '__gcc_except_tab')
        self.assertIsNotNone(tables)
        areas = self.dylib.unwind.lsdas
        for start in self.starts:
            with self.subTest(hex(start)):
                encoding = self.encoding(start)
                self.assertEqual(bool(encoding & HAS_LSDA), self.personality(start) is not None)
                self.assertEqual(bool(encoding & HAS_LSDA), start in areas)
                if start in areas:
                    self.assertIn(areas[start], range(tables.address, tables.address + tables.size))
        self.assertLessEqual(set(areas), set(self.starts))
        self.assertEqual(len(areas), len(set(areas.values())))

    def test_functions_with_handlers_or_cleanups_have_the_personality_for_them(self):
        for callee, personalities in TELLTALE_CALLS:
            functions = {self.function_of(call.address) for call in self.dylib.calls if call.callee == callee}
            self.assertTrue(functions, f'nothing calls {callee}')
            for function in functions:
                with self.subTest(callee, function=hex(function)):
                    self.assertIn(self.personality(function), personalities)

    def test_handlers_of_both_languages_are_there(self):
        self.assertEqual({None, OBJECTIVE_C, CPLUSPLUS}, {self.personality(start) for start in self.starts})

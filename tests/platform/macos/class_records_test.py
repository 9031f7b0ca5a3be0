"""The static records that describe the host classes, slot by slot as the host reads them."""
import unittest

import dylib
from expected_classes import CLASSES

# What a slot may point to, for slots that hold neither a number nor a string.
FUNCTION = 'a function'
TABLE = 'a table'

VERSION = 13
CLASS_FLAGS, PROPERTY_FLAGS, METHOD_FLAGS = 4, 6, 4
FIELD_ACCESS = 2 ** 64 - 1

RECORD_SLOTS, PROPERTY_SLOTS, METHOD_SLOTS, EVENT_SLOTS, CONSTANT_SLOTS = 30, 12, 6, 4, 5
NAME, CONSTRUCTOR, DESTRUCTOR = 1, 5, 6
PROPERTIES, METHODS, EVENTS, CONSTANTS, SHARED_METHODS = 7, 9, 11, 18, 23
TABLES = [
    (PROPERTIES, PROPERTY_SLOTS),
    (METHODS, METHOD_SLOTS),
    (EVENTS, EVENT_SLOTS),
    (CONSTANTS, CONSTANT_SLOTS),
    (SHARED_METHODS, METHOD_SLOTS),
]
DATA = ('__DATA', '__data')


def expected_record(host_class):
    def table(rows):
        return [TABLE if rows else 0, len(rows)]

    hook = FUNCTION if host_class.hooks else 0
    return [VERSION, host_class.name, host_class.super_name or 0, host_class.data_size, 0, hook, hook,
            *table(host_class.properties), *table(host_class.methods), *table(host_class.events),
            0, 0, 0, 0, 0,
            *table(host_class.constants), CLASS_FLAGS, 0, 0,
            *table(host_class.shared_methods), 0, 0, 0, 0, 0]


def expected_property(row):
    getter, setter = (FIELD_ACCESS, FIELD_ACCESS) if row.field else (FUNCTION, 0)
    return [0, row.name, row.type, PROPERTY_FLAGS, getter, setter, 0, 0, 0, 0, 0, 0]


def expected_method(row):
    return [FUNCTION, FUNCTION if row.functions == 2 else 0, row.declaration, METHOD_FLAGS, 0, 0]


def expected_event(declaration):
    return [declaration, 0, 0, 0]


def expected_constant(declaration):
    return [declaration, 0, 0, 0, 0]


class ClassRecords(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.dylib = dylib.under_test()
        self.function_starts = set(self.dylib.function_starts)

    def record_address(self, host_class):
        """The record's address. A class's name is also in its subclass's record, but after another name."""
        found = [address - 8 * NAME for address in self.dylib.pointers_in(self.dylib.section(*DATA))
                 if not self.dylib.is_pointer(address - 8)
                 and self.dylib.section_at(self.dylib.integer(address)) == ('__TEXT', '__cstring')
                 and self.dylib.string(self.dylib.integer(address)) == host_class.name]
        self.assertEqual(1, len(found), f'records of {host_class.name}')
        return found[0]

    def slot(self, address):
        """The slot's number, its string, or the kind of thing that it points to."""
        self.assertIsNone(self.dylib.symbol_at(address), 'a record holds nothing of another library')
        if not self.dylib.is_pointer(address):
            return self.dylib.integer(address)
        target = self.dylib.pointer(address)
        section = self.dylib.section_at(target)
        if section == ('__TEXT', '__cstring'):
            return self.dylib.string(target)
        if section == ('__TEXT', '__text') and target in self.function_starts:
            return FUNCTION
        return TABLE if section == DATA else f'{target:#x} in {section}'

    def slots(self, address, count):
        return [self.slot(address + 8 * number) for number in range(count)]

    def table_address(self, record, slot):
        return self.dylib.pointer(record + 8 * slot)

    def table_size(self, record, slot):
        return self.dylib.integer(record + 8 * (slot + 1))

    def assert_table(self, slot, row_slots, expected_rows):
        """Compares a table of each class with the rows that `expected_rows` returns."""
        for host_class in CLASSES:
            with self.subTest(host_class.name):
                record = self.record_address(host_class)
                table = self.table_address(record, slot)
                rows = [self.slots(table + 8 * row_slots * index, row_slots)
                        for index in range(self.table_size(record, slot))]
                self.assertEqual(expected_rows(host_class), rows)

    def functions(self, host_class):
        """The addresses of all functions that the members of the class name."""
        record = self.record_address(host_class)
        found = []
        for slot, row_slots in TABLES:
            table = self.table_address(record, slot)
            for number in range(self.table_size(record, slot) * row_slots):
                if self.slot(table + 8 * number) == FUNCTION:
                    found.append(self.dylib.pointer(table + 8 * number))
        return found

    def test_hold_the_class_in_thirty_slots(self):
        for host_class in CLASSES:
            with self.subTest(host_class.name):
                self.assertEqual(expected_record(host_class),
                                 self.slots(self.record_address(host_class), RECORD_SLOTS))

    def test_list_the_properties_in_order(self):
        self.assert_table(PROPERTIES, PROPERTY_SLOTS,
                          lambda host_class: [expected_property(row) for row in host_class.properties])

    def test_list_the_methods_in_order(self):
        self.assert_table(METHODS, METHOD_SLOTS,
                          lambda host_class: [expected_method(row) for row in host_class.methods])

    def test_list_the_events_with_their_keys_unset(self):
        self.assert_table(EVENTS, EVENT_SLOTS,
                          lambda host_class: [expected_event(row) for row in host_class.events])

    def test_list_the_constants_in_order(self):
        self.assert_table(CONSTANTS, CONSTANT_SLOTS,
                          lambda host_class: [expected_constant(row) for row in host_class.constants])

    def test_list_the_shared_methods_in_order(self):
        self.assert_table(SHARED_METHODS, METHOD_SLOTS,
                          lambda host_class: [expected_method(row) for row in host_class.shared_methods])

    def test_begin_on_16_byte_boundaries_as_do_their_tables(self):
        for host_class in CLASSES:
            record = self.record_address(host_class)
            tables = [self.table_address(record, slot) for slot, _ in TABLES]
            for address in [record, *filter(None, tables)]:
                with self.subTest(host_class.name, address=hex(address)):
                    self.assertEqual(0, address % 16)

    def test_lie_apart_from_each_other_and_from_their_tables(self):
        ranges = []
        for host_class in CLASSES:
            record = self.record_address(host_class)
            ranges.append((record, record + 8 * RECORD_SLOTS))
            ranges += [(table, table + 8 * row_slots * self.table_size(record, slot))
                       for slot, row_slots in TABLES if (table := self.table_address(record, slot))]
        ranges.sort()
        self.assertEqual([], [(before, after) for before, after in zip(ranges, ranges[1:]) if before[1] > after[0]])

    def test_can_be_written_by_the_host_and_the_library(self):
        writable = next(segment for segment in self.dylib.segments if segment.name == DATA[0])
        self.assertEqual('rw-', writable.protection)
        for host_class in CLASSES:
            record = self.record_address(host_class)
            for address in [record, self.table_address(record, EVENTS)]:
                if address is not None:
                    self.assertEqual(DATA, self.dylib.section_at(address))

    def test_name_a_function_of_its_own_for_each_member(self):
        for host_class in CLASSES:
            with self.subTest(host_class.name):
                expected = sum(1 for row in host_class.properties if not row.field)
                expected += sum(row.functions for row in host_class.methods + host_class.shared_methods)
                self.assertEqual(expected, len(set(self.functions(host_class))))

    def test_name_the_constructor_of_each_class_itself(self):
        constructors = []
        for host_class in CLASSES:
            methods = self.table_address(self.record_address(host_class), METHODS)
            constructors += [self.dylib.pointer(methods + 8 * METHOD_SLOTS * index)
                             for index, row in enumerate(host_class.methods)
                             if row.declaration.startswith('Constructor')]
        self.assertEqual(6, len(constructors))
        self.assertEqual(6, len(set(constructors)))

    def test_name_different_hooks_for_birth_and_death(self):
        for host_class in CLASSES:
            if host_class.hooks:
                record = self.record_address(host_class)
                self.assertNotEqual(self.dylib.pointer(record + 8 * CONSTRUCTOR),
                                    self.dylib.pointer(record + 8 * DESTRUCTOR))

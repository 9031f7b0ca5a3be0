"""Faults that only a broken linker makes, put into the finished dylib, and the tests that must find each."""
from collections import namedtuple

# `patch` takes the dylib and its bytes, which it changes. Each of the tests must fail.
ByteFault = namedtuple('ByteFault', 'fault patch tests')

HEADER_PROCESSOR, LATER_PROCESSORS = 8, 8
UNDEFINED_SYMBOLS = 28      # where LC_DYSYMTAB has their number
HAS_LSDA, PERSONALITY, MODE, DWARF = 0x40000000, 0x30000000, 0x0F000000, 0x04000000


def change(data, offset, function, size=4):
    number = function(int.from_bytes(data[offset:offset + size], 'little'))
    data[offset:offset + size] = number.to_bytes(size, 'little')


def file_offset(dylib, address):
    segment = next(segment for segment in dylib.segments
                   if segment.address <= address < segment.address + segment.file_size)
    return address - segment.address + segment.file_offset


def command_offset(dylib, kind):
    offset = 32
    for command in dylib.load_commands:
        if command.kind == kind:
            return offset
        offset += int(command.fields['cmdsize'])
    raise LookupError(kind)


def change_encoding(wanted, function):
    """A patch that changes each shared encoding of the unwind table that `wanted` accepts."""
    def patch(dylib, data):
        table = file_offset(dylib, dylib.section('__TEXT', '__unwind_info').address)
        first, count = (int.from_bytes(data[table + field:table + field + 4], 'little') for field in (4, 8))
        for offset in range(table + first, table + first + 4 * count, 4):
            change(data, offset, lambda encoding: function(encoding) if wanted(encoding) else encoding)
    return patch


def move_second_unwind_entry(dylib, data):
    """Moves it by one byte, in the compressed page that lists the functions."""
    table = file_offset(dylib, dylib.section('__TEXT', '__unwind_info').address)
    index = int.from_bytes(data[table + 20:table + 24], 'little')
    page = table + int.from_bytes(data[table + index + 4:table + index + 8], 'little')
    entries = page + int.from_bytes(data[page + 4:page + 6], 'little')
    change(data, entries + 4, lambda entry: entry + 1)


def move_all_unwind_entries(dylib, data):
    """Moves them by 16 bytes: changes the address that the page's entries count from."""
    table = file_offset(dylib, dylib.section('__TEXT', '__unwind_info').address)
    change(data, table + int.from_bytes(data[table + 20:table + 24], 'little'), lambda address: address + 16)


def move_rebases_into_the_code(dylib, data):
    """Clears the low half of the second byte, which names the first rebase's segment."""
    offset = int(dylib.commands('LC_DYLD_INFO_ONLY')[0].fields['rebase_off'])
    change(data, offset + 1, lambda opcode: opcode & 0xF0, size=1)


def make_the_metaclass_a_class(dylib, data):
    metaclass = dylib.pointer(dylib.pointer(dylib.section('__DATA', '__objc_classlist').address))
    change(data, file_offset(dylib, dylib.pointer(metaclass + 32)), lambda flags: flags & ~1)


def share_a_method(dylib, data):
    """The second method of the Cocoa class gets the first one's function."""
    methods = dylib.pointer(dylib.pointer(dylib.pointer(
        dylib.section('__DATA', '__objc_classlist').address) + 32) + 32)
    change(data, file_offset(dylib, methods + 8 + 24 + 16), lambda _: dylib.pointer(methods + 8 + 16), size=8)


BYTE_FAULTS = [
    ByteFault('for later processors alone',
              lambda dylib, data: change(data, HEADER_PROCESSOR, lambda _: LATER_PROCESSORS),
              ['header_test.Header.test_is_a_64_bit_dylib_for_x86_64']),
    ByteFault('an undefined symbol that is not bound',
              lambda dylib, data: change(data, command_offset(dylib, 'LC_DYSYMTAB') + UNDEFINED_SYMBOLS,
                                         lambda number: number - 1),
              ['imports_test.Imports.test_are_the_symbols_that_the_symbol_table_leaves_undefined']),
    ByteFault('pointers in the code that the loader moves', move_rebases_into_the_code,
              ['memory_test.Memory.test_loader_changes_nothing_outside_the_data_segment']),
    ByteFault('a metaclass like a class', make_the_metaclass_a_class,
              ['observer_class_test.ObserverClass.test_is_distinguished_from_its_metaclass']),
    ByteFault('two Cocoa methods with one function', share_a_method,
              ['observer_class_test.ObserverClass.test_methods_are_functions_of_their_own']),
    ByteFault('handlers without their table',
              change_encoding(lambda encoding: encoding & HAS_LSDA, lambda encoding: encoding & ~HAS_LSDA),
              ['unwinding_test.Unwinding.test_personality_and_handler_table_come_together']),
    ByteFault('handlers without a personality',
              change_encoding(lambda encoding: encoding & HAS_LSDA, lambda encoding: encoding & ~PERSONALITY),
              ['unwinding_test.Unwinding.test_handlers_of_both_languages_are_there',
               'unwinding_test.Unwinding.test_personality_and_handler_table_come_together',
               'unwinding_test.Unwinding.test_functions_with_handlers_or_cleanups_have_the_personality_for_them']),
    ByteFault('frames whose DWARF is missing',
              change_encoding(lambda encoding: encoding & HAS_LSDA == 0,
                              lambda encoding: encoding & ~MODE & 0xFF000000 | DWARF),
              ['unwinding_test.Unwinding.test_frames_that_need_dwarf_have_it']),
    ByteFault('an unwind entry inside a function', move_second_unwind_entry,
              ['unwinding_test.Unwinding.test_entries_begin_where_functions_begin']),
    ByteFault('a first function that unwinding does not know', move_all_unwind_entries,
              ['unwinding_test.Unwinding.test_covers_the_whole_code_section',
               'unwinding_test.Unwinding.test_is_described_for_every_function']),
]

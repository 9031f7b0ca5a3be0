"""Faults that only a broken linker makes, put into the finished dylib, and the tests that must find each."""
from collections import namedtuple

import architectures

# `patch` takes the dylib and its bytes, which it changes. Each of the tests must fail. The fault is one on the named
# architectures.
ByteFault = namedtuple('ByteFault', 'fault patch tests architectures', defaults=[architectures.ARCHITECTURES])

HEADER_SUBTYPE = 8
UNDEFINED_SYMBOLS = 28      # where LC_DYSYMTAB has their number
SEGMENT_FLAGS = 68
HAS_LSDA, PERSONALITY, MODE = 0x40000000, 0x30000000, 0x0F000000
# In the signature: where the offset of the code directory stands, and fields of the code directory.
SIGNATURE_SLOTS, SIGNATURE_DIRECTORY = 8, 16
DIRECTORY_FLAGS, IDENTIFIER, SLOTS, LIMIT, CODE_SIZE = 12, 20, 28, 32, 72


def change(data, offset, function, size=4, order='little'):
    number = function(int.from_bytes(data[offset:offset + size], order))
    data[offset:offset + size] = number.to_bytes(size, order)


def file_offset(dylib, address):
    segment = next(segment for segment in dylib.segments
                   if segment.address <= address < segment.address + segment.file_size)
    return address - segment.address + segment.file_offset


def command_offset(dylib, kind, segment=None):
    """Where the command of that kind is, or the one of the segment."""
    offset = 32
    for command in dylib.load_commands:
        if command.kind == kind and command.fields.get('segname') == segment:
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


def observer_class(dylib):
    return dylib.pointer(dylib.section(architectures.under_test().constants, '__objc_classlist').address)


def make_the_metaclass_a_class(dylib, data):
    metaclass = dylib.pointer(observer_class(dylib))
    change(data, file_offset(dylib, dylib.pointer(metaclass + 32)), lambda flags: flags & ~1)


def leave_constants_writable(dylib, data):
    change(data, command_offset(dylib, 'LC_SEGMENT_64', '__DATA_CONST') + SEGMENT_FLAGS, lambda flags: 0)


def signature_offset(dylib):
    return int(dylib.commands('LC_CODE_SIGNATURE')[0].fields['dataoff'])


def change_directory(field, function, size=4):
    """A patch that changes a field of the signature's code directory."""
    def patch(dylib, data):
        start = signature_offset(dylib)
        directory = start + int.from_bytes(data[start + SIGNATURE_DIRECTORY:start + SIGNATURE_DIRECTORY + 4], 'big')
        change(data, directory + field, function, size, 'big')
    return patch


def share_a_method(dylib, data):
    """The second method of the Cocoa class gets the first one's function."""
    methods = dylib.pointer(dylib.pointer(observer_class(dylib) + 32) + 32)
    change(data, file_offset(dylib, methods + 8 + 24 + 16), lambda _: dylib.pointer(methods + 8 + 16), size=8)


BYTE_FAULTS = [
    ByteFault('for later processors alone',
              lambda dylib, data: change(data, HEADER_SUBTYPE, lambda _: architectures.under_test().other_subtype),
              ['header_test.Header.test_is_a_64_bit_dylib_for_every_model_of_the_processor']),
    ByteFault('an undefined symbol that is not bound',
              lambda dylib, data: change(data, command_offset(dylib, 'LC_DYSYMTAB') + UNDEFINED_SYMBOLS,
                                         lambda number: number - 1),
              ['imports_test.Imports.test_are_the_symbols_that_the_symbol_table_leaves_undefined']),
    ByteFault('pointers in the code that the loader moves', move_rebases_into_the_code,
              ['memory_test.Memory.test_loader_changes_nothing_outside_the_data_segments']),
    ByteFault('constants that stay writable', leave_constants_writable,
              ['memory_test.Memory.test_constants_are_read_only_once_the_loader_has_changed_them'], ['arm64']),
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
                              lambda encoding: encoding & ~MODE & 0xFF000000
                              | architectures.under_test().dwarf_mode),
              ['unwinding_test.Unwinding.test_frames_that_need_dwarf_have_it']),
    ByteFault('an unwind entry inside a function', move_second_unwind_entry,
              ['unwinding_test.Unwinding.test_entries_begin_where_functions_begin']),
    ByteFault('a first function that unwinding does not know', move_all_unwind_entries,
              ['unwinding_test.Unwinding.test_covers_the_whole_code_section',
               'unwinding_test.Unwinding.test_is_described_for_every_function']),
    ByteFault('code that was changed after it was signed',
              lambda dylib, data: change(data, file_offset(dylib, dylib.section('__TEXT', '__text').address),
                                         lambda instruction: instruction ^ 1),
              ['signature_test.Signature.test_has_the_right_hash_of_each_page'], ['arm64']),
    ByteFault('a signature in front of other bytes', lambda dylib, data: data.extend(bytes(16)),
              ['signature_test.Signature.test_ends_the_file'], ['arm64']),
    ByteFault('a signature with more than hashes of pages',
              lambda dylib, data: change(data, signature_offset(dylib) + SIGNATURE_SLOTS, lambda count: count + 1,
                                         order='big'),
              ['signature_test.Signature.test_holds_hashes_of_pages_alone'], ['arm64']),
    ByteFault("a signature with somebody's certificate", change_directory(DIRECTORY_FLAGS, lambda flags: flags & ~2),
              ['signature_test.Signature.test_names_nobody'], ['arm64']),
    ByteFault('a signature of another file', change_directory(IDENTIFIER, lambda offset: offset + 1),
              ['signature_test.Signature.test_identifies_the_dylib_by_its_file_name'], ['arm64']),
    ByteFault('a last page that is not signed', change_directory(SLOTS, lambda count: count - 1),
              ['signature_test.Signature.test_covers_the_whole_file_before_it',
               'signature_test.Signature.test_has_the_right_hash_of_each_page'], ['arm64']),
    ByteFault('a signature that ends before the last bytes', change_directory(LIMIT, lambda limit: limit - 4),
              ['signature_test.Signature.test_covers_the_whole_file_before_it'], ['arm64']),
    ByteFault('a signature that takes data for code', change_directory(CODE_SIZE, lambda size: size * 2, 8),
              ['signature_test.Signature.test_knows_where_the_code_is'], ['arm64']),
]

"""The dylib under test: its tables, and its bytes by the addresses that they are loaded at."""
import functools
import os
from collections import namedtuple
from pathlib import Path

import llvm_tools

Segment = namedtuple('Segment', 'name address size file_offset file_size maximum_protection protection flags')
Section = namedtuple('Section', 'segment name address size kind')
Library = namedtuple('Library', 'install_name load_command compatibility')
Import = namedtuple('Import', 'symbol library weak')

WEAK_IMPORT = 1  # the flag in a lazy bind's opcodes


@functools.cache
def under_test():
    """The dylib that the environment names."""
    return Dylib(os.environ['QZL_DYLIB'])


class Dylib:
    def __init__(self, path):
        self.path = Path(path)
        self.debug_companion = Path(f'{path}.dSYM')

    @functools.cached_property
    def bytes(self):
        return self.path.read_bytes()

    # Header and load commands

    @functools.cached_property
    def header(self):
        return llvm_tools.mach_header(self.path)

    @functools.cached_property
    def load_commands(self):
        return llvm_tools.load_commands(self.path)

    def commands(self, *kinds):
        return [command for command in self.load_commands if command.kind in kinds]

    @functools.cached_property
    def install_name(self):
        return _name(self.commands('LC_ID_DYLIB')[0])

    @functools.cached_property
    def libraries(self):
        """The libraries that are loaded with the dylib, in the order of their ordinals."""
        return [Library(_name(command), command.kind, _version(command.fields['compatibility version']))
                for command in self.load_commands if command.kind.endswith('_DYLIB')
                and command.kind != 'LC_ID_DYLIB']

    @functools.cached_property
    def segments(self):
        return [Segment(fields['segname'], int(fields['vmaddr'], 16), int(fields['vmsize'], 16),
                        int(fields['fileoff']), int(fields['filesize']), fields['maxprot'], fields['initprot'],
                        fields['flags'])
                for _, fields, _ in self.commands('LC_SEGMENT_64')]

    @functools.cached_property
    def sections(self):
        return [Section(fields['segname'], fields['sectname'], int(fields['addr'], 16),
                        int(fields['size'], 16), fields['type'])
                for command in self.commands('LC_SEGMENT_64') for fields in command.sections]

    def section(self, segment, name):
        """The section, or None where there is none."""
        return next((section for section in self.sections if section[:2] == (segment, name)), None)

    def section_at(self, address):
        """The section that the address lies in, as (segment, name); None outside all of them."""
        return next((section[:2] for section in self.sections
                     if section.address <= address < section.address + section.size), None)

    # Symbols

    @functools.cached_property
    def exports(self):
        return llvm_tools.exports(self.path)

    @functools.cached_property
    def defined_symbols(self):
        return llvm_tools.defined_symbols(self.path)

    @functools.cached_property
    def imports(self):
        """The symbols that are bound when the dylib is loaded or at their first call."""
        found = {Import(bind.symbol, self._library(bind.library), bind.weak_import)
                 for bind in llvm_tools.binds(self.path)}
        weak = self._weakly_imported_lazy_symbols()
        found |= {Import(symbol, self._library(library), symbol in weak)
                  for _, library, symbol in llvm_tools.lazy_binds(self.path)}
        return sorted(found)

    @functools.cached_property
    def weak_binds(self):
        return {symbol for _, symbol in llvm_tools.weak_binds(self.path)}

    @functools.cached_property
    def fixed_up_addresses(self):
        """Every address that the loader writes to."""
        tables = (llvm_tools.binds(self.path), llvm_tools.lazy_binds(self.path), llvm_tools.weak_binds(self.path))
        return self._rebases | {row[0] for table in tables for row in table}

    def symbol_at(self, address):
        """The symbol that is bound at load to the pointer at the address; None where there is none."""
        return self._bound.get(address)

    # Code

    @functools.cached_property
    def function_starts(self):
        return llvm_tools.function_starts(self.path)

    @functools.cached_property
    def unwind(self):
        return llvm_tools.unwind_info(self.path)

    @functools.cached_property
    def dwarf_unwind_ranges(self):
        return llvm_tools.dwarf_unwind_ranges(self.path)

    @functools.cached_property
    def calls(self):
        return llvm_tools.calls(self.path)

    # Bytes

    def read(self, address, size):
        """The bytes at the address, before the loader moves pointers; zeros where the file has none."""
        for segment in self.segments:
            if segment.address <= address and address + size <= segment.address + segment.size:
                offset = address - segment.address
                in_file = max(0, min(size, segment.file_size - offset))
                start = segment.file_offset + offset
                return self.bytes[start:start + in_file].ljust(size, b'\0')
        raise IndexError(f'{address:#x} lies in no segment')

    def integer(self, address, size=8):
        return int.from_bytes(self.read(address, size), 'little')

    def string(self, address):
        """The NUL-terminated string at the address."""
        end = address
        while self.read(end, 1) != b'\0':
            end += 1
        return self.read(address, end - address).decode()

    def is_pointer(self, address):
        """Whether the 8 bytes at the address are a pointer into the dylib."""
        return address in self._rebases

    def pointer(self, address):
        """The target of the pointer at the address; None for null."""
        if self.is_pointer(address):
            return self.integer(address)
        if self.integer(address) != 0 or self.symbol_at(address):
            raise ValueError(f'{address:#x} holds no pointer into the dylib')
        return None

    def pointers_in(self, section):
        """The addresses of the section's pointers into the dylib."""
        return sorted(address for address in self._rebases
                      if section.address <= address < section.address + section.size)

    @functools.cached_property
    def _rebases(self):
        return llvm_tools.rebases(self.path)

    @functools.cached_property
    def _bound(self):
        return {bind.address: bind.symbol for bind in llvm_tools.binds(self.path)}

    def _library(self, short_name):
        """The install name behind a short name."""
        names = [library.install_name for library in self.libraries
                 if Path(library.install_name).name.split('.')[0] == short_name]
        return names[0] if len(names) == 1 else short_name

    def _weakly_imported_lazy_symbols(self):
        """Read from the opcodes themselves, since the tools do not print the flag."""
        fields = self.commands('LC_DYLD_INFO_ONLY')[0].fields
        start = int(fields['lazy_bind_off'])
        opcodes = self.bytes[start:start + int(fields['lazy_bind_size'])]
        weak, position = set(), 0
        while position < len(opcodes):
            opcode, immediate = opcodes[position] & 0xF0, opcodes[position] & 0x0F
            position += 1
            if opcode == 0x40:  # the symbol's name follows
                end = opcodes.index(0, position)
                if immediate & WEAK_IMPORT:
                    weak.add(opcodes[position:end].decode())
                position = end + 1
            elif opcode in (0x20, 0x60, 0x70, 0x80):  # a number of 7 bits a byte follows
                while opcodes[position] & 0x80:
                    position += 1
                position += 1
        return weak


def _name(command):
    return command.fields['name'].rsplit(' (offset', 1)[0]


def _version(text):
    return tuple(int(part) for part in text.split('.'))

"""Copies the debugging information of a Mach-O file into an ELF file, which gdb reads."""

import struct
from typing import NamedTuple


class Processor(NamedTuple):
    mach_o_type: int
    elf_machine: int


X86_64 = Processor(0x01000007, 62)
ARM64 = Processor(0x0100000C, 183)

UNIVERSAL = 0xCAFEBABE
SEGMENT_64 = 0x19
SHT_NULL, SHT_PROGBITS, SHT_STRTAB, SHT_NOBITS = 0, 1, 3, 8
SHF_ALLOC, SHF_EXECINSTR = 2, 4


def image_for(processor, content):
    """The image for a processor in a Mach-O file: the file itself, or a slice of a universal file; None for none."""
    magic, count = struct.unpack_from(">II", content)
    if magic != UNIVERSAL:
        return content if struct.unpack_from("<I", content, 4)[0] == processor.mach_o_type else None
    for number in range(count):
        kind, _, offset, size = struct.unpack_from(">IIII", content, 8 + 20 * number)
        if kind == processor.mach_o_type:
            return content[offset:offset + size]
    return None


def sections_of(mach_o):
    """The sections of a 64-bit Mach-O file: (segment, name, address, size, offset in the file)."""
    command_count = struct.unpack_from("<I", mach_o, 16)[0]
    offset = 32
    for _ in range(command_count):
        command, size = struct.unpack_from("<II", mach_o, offset)
        if command == SEGMENT_64:
            section_count = struct.unpack_from("<I", mach_o, offset + 64)[0]
            for number in range(section_count):
                raw = struct.unpack_from("<16s16sQQI", mach_o, offset + 72 + 80 * number)
                name, segment = (text.rstrip(b"\0").decode() for text in raw[:2])
                yield segment, name, *raw[2:]
        offset += size


def elf_with(machine, text_address, text_size, debug_sections):
    """An ELF file for a processor with a section .text that has no bytes, and these sections, by name."""
    names = b"\0"
    sections = [(0, SHT_NULL, 0, 0, b"", 0)]

    def add(name, kind, flags, address, content, size):
        nonlocal names
        sections.append((len(names), kind, flags, address, content, size))
        names += name.encode() + b"\0"

    add(".text", SHT_NOBITS, SHF_ALLOC | SHF_EXECINSTR, text_address, b"", text_size)
    for name, content in debug_sections.items():
        add(name, SHT_PROGBITS, 0, 0, content, len(content))
    add(".shstrtab", SHT_STRTAB, 0, 0, b"", 0)
    sections[-1] = sections[-1][:4] + (names, len(names))

    body, headers = b"", b""
    for name, kind, flags, address, content, size in sections:
        headers += struct.pack("<IIQQQQIIQQ", name, kind, flags, address, 64 + len(body), size, 0, 0, 1, 0)
        body += content
    executable = 2
    header = b"\x7fELF\x02\x01\x01" + bytes(9) + struct.pack(
        "<HHIQQQIHHHHHH", executable, machine, 1, 0, 0, 64 + len(body), 0, 64, 0, 0, 64, len(sections),
        len(sections) - 1)
    return header + body + headers


def elf_file(processor, content):
    """An ELF file with the debugging information for a processor in a Mach-O file; None if it has no such image."""
    mach_o = image_for(processor, content)
    if mach_o is None:
        return None
    text, debug = (0, 0), {}
    for segment, name, address, size, offset in sections_of(mach_o):
        if (segment, name) == ("__TEXT", "__text"):
            text = (address, size)
        elif segment == "__DWARF" and name.startswith("__debug_"):
            debug["." + name[2:]] = mach_o[offset:offset + size]
    return elf_with(processor.elf_machine, *text, debug)

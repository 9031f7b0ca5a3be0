"""Source-level debugging of Mach-O dylibs that the loader runs: source this file in gdb before the program runs.

gdb does not read Mach-O. For each dylib that is loaded the debugging companion (.dSYM) beside it is copied into an ELF
file, and added at the place where the dylib lies. gdb knows functions of Objective-C++ files by their mangled names, so
stop at a line: break NSNotificationObserver.mm:32
"""

import os
import struct
import tempfile

import gdb

# The folder that the debugging information calls ".".
SOURCES = os.path.abspath(os.path.join(os.path.dirname(__file__), "../.."))

SEGMENT_64 = 0x19
SHT_NULL, SHT_PROGBITS, SHT_STRTAB, SHT_NOBITS = 0, 1, 3, 8
SHF_ALLOC, SHF_EXECINSTR = 2, 4


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


def elf_with(text_address, text_size, debug_sections):
    """An ELF file with a section .text that has no bytes, and these sections, by name."""
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
    executable, x86_64 = 2, 62
    header = b"\x7fELF\x02\x01\x01" + bytes(9) + struct.pack(
        "<HHIQQQIHHHHHH", executable, x86_64, 1, 0, 0, 64 + len(body), 0, 64, 0, 0, 64, len(sections),
        len(sections) - 1)
    return header + body + headers


def symbol_file(dylib):
    """The path of an ELF file with the debugging information of a dylib; None without a companion."""
    companion = f"{dylib}.dSYM/Contents/Resources/DWARF/{os.path.basename(dylib)}"
    if not os.path.exists(companion):
        return None
    with open(companion, "rb") as file:
        mach_o = file.read()
    text, debug = (0, 0), {}
    for segment, name, address, size, offset in sections_of(mach_o):
        if (segment, name) == ("__TEXT", "__text"):
            text = (address, size)
        elif segment == "__DWARF" and name.startswith("__debug_"):
            debug["." + name[2:]] = mach_o[offset:offset + size]
    with tempfile.NamedTemporaryFile(prefix="symbols-", suffix=".elf", delete=False) as file:
        file.write(elf_with(*text, debug))
    return file.name


class DylibLoaded(gdb.Breakpoint):
    """Stops for a moment where the loader has mapped a dylib, and adds its symbols."""

    def __init__(self):
        super().__init__("machoDylibLoaded", internal=True)

    def stop(self):
        frame = gdb.selected_frame()
        dylib = frame.read_register("rdi").cast(gdb.lookup_type("char").pointer()).string()
        slide = int(frame.read_register("rsi"))
        file = symbol_file(dylib)
        if file is None:
            gdb.write(f"{dylib} has no debugging companion beside it\n")
        else:
            gdb.execute(f"add-symbol-file {file} -o {slide:#x}", to_string=True)
            os.unlink(file)
        return False


gdb.execute("set breakpoint pending on")
gdb.execute(f"set substitute-path . {SOURCES}")
DylibLoaded()

"""Source-level debugging of Mach-O images that the loader runs: source this file in gdb before the program runs.

gdb does not read Mach-O. For each image that is loaded the debugging companion (.dSYM) beside it is copied into an ELF
file, and added at the place where the image lies. gdb knows functions of Objective-C++ files by their mangled names, so
stop at a line: break NSNotificationObserver.mm:32
"""

import os
import sys
import tempfile

import gdb

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import debug_symbols

# The folder that the debugging information calls ".".
SOURCES = os.path.abspath(os.path.join(os.path.dirname(__file__), "../.."))

# By gdb's names: a processor, and its registers with a function's first two arguments.
PROCESSORS = {
    "i386:x86-64": (debug_symbols.X86_64, "rdi", "rsi"),
    "aarch64": (debug_symbols.ARM64, "x0", "x1"),
}


def symbol_file(image, processor):
    """The path of an ELF file with the debugging information of an image; None without a companion for the processor."""
    companion = f"{image}.dSYM/Contents/Resources/DWARF/{os.path.basename(image)}"
    if not os.path.exists(companion):
        return None
    with open(companion, "rb") as file:
        elf = debug_symbols.elf_file(processor, file.read())
    if elf is None:
        return None
    with tempfile.NamedTemporaryFile(prefix="symbols-", suffix=".elf", delete=False) as file:
        file.write(elf)
    return file.name


class ImageLoaded(gdb.Breakpoint):
    """Stops for a moment where the loader has mapped an image, and adds its symbols."""

    def __init__(self):
        super().__init__("machoImageLoaded", internal=True)

    def stop(self):
        frame = gdb.selected_frame()
        processor, first, second = PROCESSORS[frame.architecture().name()]
        image = frame.read_register(first).cast(gdb.lookup_type("char").pointer()).string()
        slide = int(frame.read_register(second))
        file = symbol_file(image, processor)
        if file is None:
            gdb.write(f"{image} has no debugging companion for this processor beside it\n")
        else:
            gdb.execute(f"add-symbol-file {file} -o {slide:#x}", to_string=True)
            os.unlink(file)
        return False


gdb.execute("set breakpoint pending on")
gdb.execute(f"set substitute-path . {SOURCES}")
ImageLoaded()

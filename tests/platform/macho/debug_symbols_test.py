"""The debugging information of each slice of a dylib is found: debug_symbols_test.py LLVM FOLDER

FOLDER has the test dylibs for each processor, and their companions.
"""

import os
import struct
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../platform/macho"))
import debug_symbols

LLVM, FOLDER = sys.argv[1:3]
COMPANION = "objects.dylib.dSYM/Contents/Resources/DWARF/objects.dylib"
PROCESSORS = {"x86_64": (debug_symbols.X86_64, "X86-64"), "arm64": (debug_symbols.ARM64, "AArch64")}


def output_of(tool, *arguments):
    return subprocess.run([f"{LLVM}/bin/{tool}", *arguments], check=True, capture_output=True, text=True).stdout


def companion(processor):
    return f"{FOLDER}/{processor}/{COMPANION}"


def content_of(path):
    with open(path, "rb") as file:
        return file.read()


class DebugSymbols(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name, content=None):
        path = os.path.join(self.folder.name, name)
        if content is not None:
            with open(path, "wb") as file:
                file.write(content)
        return path

    def universal(self):
        path = self.path("universal")
        output_of("llvm-lipo", "-create", *map(companion, PROCESSORS), "-output", path)
        return content_of(path)

    def test_each_processor_gets_an_elf_file_that_names_its_functions(self):
        for name, (processor, machine) in PROCESSORS.items():
            with self.subTest(name):
                elf = self.path(name, debug_symbols.elf_file(processor, content_of(companion(name))))
                self.assertRegex(output_of("llvm-readelf", "--file-header", elf), f"Machine: .*{machine}")
                functions = output_of("llvm-dwarfdump", "--name=newShape", elf)
                self.assertIn('DW_AT_name\t("newShape")', functions)
                self.assertEqual(functions.split("\n", 2)[2],
                                 output_of("llvm-dwarfdump", "--name=newShape", companion(name)).split("\n", 2)[2])

    def test_a_universal_companion_serves_each_processor(self):
        universal = self.universal()
        for name, (processor, _) in PROCESSORS.items():
            with self.subTest(name):
                self.assertEqual(debug_symbols.elf_file(processor, universal),
                                 debug_symbols.elf_file(processor, content_of(companion(name))))

    def test_a_companion_for_another_processor_serves_none(self):
        self.assertIsNone(debug_symbols.elf_file(debug_symbols.ARM64, content_of(companion("x86_64"))))
        header = struct.pack(">7I", debug_symbols.UNIVERSAL, 1, debug_symbols.X86_64.mach_o_type, 3, 28, 0, 0)
        self.assertIsNone(debug_symbols.elf_file(debug_symbols.ARM64, header))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])

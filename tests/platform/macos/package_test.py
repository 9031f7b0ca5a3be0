"""The release: what it contains, and that it is the same each time."""
import hashlib
import shutil
import struct
import subprocess
import tempfile
import unittest
import zipfile
from collections import namedtuple
from pathlib import Path

import building
import llvm_tools
from architectures import ARCHITECTURES
from building import CHECK, DYLIB
from dylib import under_test

SCRIPT = building.SOURCES / 'scripts/package'
UNIVERSAL_MAGIC = 0xCAFEBABE

Slice = namedtuple('Slice', 'processor subtype offset size alignment')


def pack(dylibs, folder):
    """Packs the dylibs into the folder and returns the paths of the archives: the release's and its companion's."""
    printed = subprocess.run([SCRIPT, '--dylibs', *dylibs, '--output', folder], check=True, capture_output=True,
                             text=True).stdout
    return [Path(line.split('  ', 1)[1]) for line in printed.splitlines()]


def contents(path):
    with zipfile.ZipFile(path) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def slices(universal):
    """The slices that the header of a universal file lists; its numbers are big-endian."""
    magic, count = struct.unpack_from('>2I', universal)
    if magic != UNIVERSAL_MAGIC:
        raise ValueError(f'{magic:#x} begins no universal file')
    return [Slice._make(struct.unpack_from('>5I', universal, 8 + 20 * index)) for index in range(count)]


class Package(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.dylibs = [building.built_dylib(architecture) for architecture in ARCHITECTURES.values()]
        self.archives = pack(self.dylibs, self.folder)
        self.release, self.companion = map(contents, self.archives)
        self.version = under_test().commands('LC_ID_DYLIB')[0].fields['current version']
        self.top = f'NotificationsQZL-{self.version}'
        self.universal = self.release.get(f'{self.top}/{DYLIB}')

    def unpacked(self, files):
        """The folder that the archive's files make."""
        for name, content in files.items():
            path = self.folder / 'unpacked' / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        return self.folder / 'unpacked' / self.top

    def test_holds_the_dylib_its_check_their_page_the_licence_the_reference_and_checksums(self):
        self.assertEqual([f'{self.top}/{name}' for name in (DYLIB, CHECK, 'README.md', 'LICENSE', 'reference.md', 'SHA256SUMS')],
                         list(self.release))

    def test_has_the_debugging_companion_in_an_archive_of_its_own(self):
        self.assertEqual([f'{self.top}/{DYLIB}.dSYM/Contents/{name}'
                          for name in ('Info.plist', f'Resources/DWARF/{DYLIB}')], list(self.companion))

    def test_is_named_by_the_version_of_the_dylib(self):
        self.assertEqual([f'{self.top}-macos.zip', f'{self.top}-macos-dSYM.zip'],
                         [archive.name for archive in self.archives])

    def test_has_the_right_checksums(self):
        files = {Path(name).name: content for name, content in self.release.items()}
        lines = files.pop('SHA256SUMS').decode().splitlines()
        self.assertEqual([f'{hashlib.sha256(content).hexdigest()}  {name}' for name, content in files.items()], lines)

    def test_is_the_same_bytes_of_the_same_dylibs_at_another_time_and_place(self):
        copies = []
        for dylib in self.dylibs:
            folder = self.folder / f'copy {len(copies)}'
            folder.mkdir()
            copies.append(folder / DYLIB)
            shutil.copyfile(dylib, copies[-1])
            shutil.copyfile(dylib.with_name(CHECK), copies[-1].with_name(CHECK))
            shutil.copytree(f'{dylib}.dSYM', f'{copies[-1]}.dSYM')
        self.assertEqual([archive.read_bytes() for archive in self.archives],
                         [archive.read_bytes() for archive in pack(copies, self.folder / 'again')])

    def test_dylib_and_program_are_universal_files_of_what_the_presets_build(self):
        for name in (DYLIB, CHECK):
            universal = self.release[f'{self.top}/{name}']
            found = [universal[part.offset:part.offset + part.size] for part in slices(universal)]
            self.assertEqual([hashlib.sha256(dylib.with_name(name).read_bytes()).hexdigest() for dylib in self.dylibs],
                             [hashlib.sha256(part).hexdigest() for part in found])

    def test_program_may_be_executed(self):
        with zipfile.ZipFile(self.archives[0]) as archive:
            self.assertEqual(0o755, archive.getinfo(f'{self.top}/{CHECK}').external_attr >> 16 & 0o777)

    def test_universal_file_names_the_processors_as_its_slices_do(self):
        for part in slices(self.universal):
            with self.subTest(hex(part.processor)):
                self.assertEqual(struct.unpack_from('<2I', self.universal, part.offset + 4),
                                 (part.processor, part.subtype))

    def test_slices_begin_on_pages_of_their_processors(self):
        parts = slices(self.universal)
        self.assertEqual([architecture.slice_alignment for architecture in ARCHITECTURES.values()],
                         [part.alignment for part in parts])
        self.assertEqual([0] * len(parts), [part.offset % (1 << part.alignment) for part in parts])

    def test_debugging_companion_belongs_to_each_slice(self):
        folder = self.unpacked(self.release | self.companion)
        expected = {identity for dylib in self.dylibs for identity in llvm_tools.uuids(dylib)}
        self.assertEqual(len(ARCHITECTURES), len(expected))
        self.assertEqual(expected, set(llvm_tools.uuids(folder / DYLIB)))
        self.assertEqual(expected, set(llvm_tools.uuids(folder / f'{DYLIB}.dSYM')))
        llvm_tools.verify_debug_information(folder / f'{DYLIB}.dSYM')

"""The same sources give the same bytes, wherever they are and wherever they are built."""
import hashlib
import sys
import tempfile
import unittest
from pathlib import Path

import building
import dylib

# Where compilers and linkers look besides the folders that they are told.
SEARCH_PATHS = ['CPATH', 'CPLUS_INCLUDE_PATH', 'OBJCPLUS_INCLUDE_PATH', 'LIBRARY_PATH']


def digests(path):
    """The digests of the dylib and of its debugging information."""
    companion = Path(f'{path}.dSYM/Contents/Resources/DWARF') / path.name
    return [hashlib.sha256(file.read_bytes()).hexdigest() for file in (path, companion)]


class ReproducibleBuild(unittest.TestCase):
    def test_gives_the_same_bytes_in_another_folder_and_from_another_copy(self):
        with tempfile.TemporaryDirectory() as temporary:
            folder = Path(temporary)
            copy = folder / 'another copy of the sources'
            building.copy_sources(copy)
            builds = [
                (building.SOURCES, folder / 'build'),
                (building.SOURCES, folder / 'a longer path' / 'to build in'),
                (copy, folder / 'build of the copy'),
                (copy, copy / 'build' / 'in the copy'),
            ]
            found = {str(place): digests(building.build(sources, place)) for sources, place in builds}
        self.assertEqual(1, len({tuple(digest) for digest in found.values()}), found)

    @unittest.skipIf(sys.platform == 'darwin', "Apple's tools take what the environment names")
    def test_takes_neither_headers_nor_libraries_from_the_environment(self):
        stub = (building.SOURCES / 'platform/macos/stubs/usr/lib/libobjc.tbd').read_text(encoding='utf-8')
        header = '#pragma once\n#include_next <stdint.h>\n[[gnu::used]] static const int planted = 1;\n'
        with tempfile.TemporaryDirectory() as temporary:
            # Of a folder that two variables name the compiler takes only the last place.
            folders = {name: Path(temporary) / name for name in SEARCH_PATHS}
            for folder in folders.values():
                folder.mkdir()
                (folder / 'stdint.h').write_text(header, encoding='utf-8')
                (folder / 'libobjc.tbd').write_text(stub.replace('current-version: 228', 'current-version: 1'),
                                                    encoding='utf-8')
            built = building.build(building.SOURCES, Path(temporary) / 'build',
                                   {name: str(folder) for name, folder in folders.items()})
            self.assertEqual(digests(dylib.under_test().path), digests(built))

"""The same sources give the same bytes, wherever they are and wherever they are built."""
import hashlib
import tempfile
import unittest
from pathlib import Path

import building


def digests(dylib):
    """The digests of the dylib and of its debugging information."""
    companion = Path(f'{dylib}.dSYM/Contents/Resources/DWARF') / dylib.name
    return [hashlib.sha256(path.read_bytes()).hexdigest() for path in (dylib, companion)]


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
                (copy, copy / 'build' / 'macos'),
            ]
            found = {str(place): digests(building.build(sources, place)) for sources, place in builds}
        self.assertEqual(1, len({tuple(digest) for digest in found.values()}), found)

"""The release: what it contains, and that it is the same each time."""
import hashlib
import subprocess
import tempfile
import unittest
import zipfile
from pathlib import Path

import building
from dylib import under_test

SCRIPT = building.SOURCES / 'scripts/package'


def pack(dylib_file, folder):
    """Packs the dylib into the folder and returns the archive's path."""
    printed = subprocess.run([SCRIPT, '--dylib', dylib_file, '--output', folder], check=True, capture_output=True,
                             text=True).stdout
    return Path(printed.split('  ', 1)[1].strip())


class Package(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.archive = pack(under_test().path, self.folder)
        self.contents = {}
        with zipfile.ZipFile(self.archive) as archive:
            for name in archive.namelist():
                self.contents[name] = archive.read(name)

    def test_holds_the_dylib_the_licence_the_reference_and_checksums(self):
        top = f'NotificationsQZL-{self.version()}'
        self.assertEqual([f'{top}/{name}' for name in
                          ('libNotificationsQZL.dylib', 'LICENSE', 'reference.md', 'SHA256SUMS')],
                         list(self.contents))
        self.assertEqual(under_test().path.read_bytes(), self.contents[f'{top}/libNotificationsQZL.dylib'])

    def test_is_named_by_the_version_of_the_dylib(self):
        self.assertEqual(f'NotificationsQZL-{self.version()}-macos-x86_64.zip', self.archive.name)

    def test_has_the_right_checksums(self):
        files = {Path(name).name: content for name, content in self.contents.items()}
        lines = files.pop('SHA256SUMS').decode().splitlines()
        self.assertEqual([f'{hashlib.sha256(content).hexdigest()}  {name}' for name, content in files.items()], lines)

    def test_is_the_same_bytes_of_the_same_dylib_at_another_time_and_place(self):
        copy = self.folder / 'elsewhere' / 'libNotificationsQZL.dylib'
        copy.parent.mkdir()
        copy.write_bytes(under_test().path.read_bytes())
        self.assertEqual(self.archive.read_bytes(), pack(copy, self.folder / 'again').read_bytes())

    def version(self):
        return under_test().commands('LC_ID_DYLIB')[0].fields['current version']

"""Which libraries are loaded with the dylib, and which of them may be missing."""
import unittest

import dylib

FRAMEWORKS = '/System/Library/Frameworks'
REQUIRED, OPTIONAL = 'LC_LOAD_DYLIB', 'LC_LOAD_WEAK_DYLIB'

# Install name, load command, and the compatibility version that macOS 10.9 has: the loader refuses a higher one.
LIBRARIES = [
    (f'{FRAMEWORKS}/AppKit.framework/Versions/C/AppKit', REQUIRED, (45, 0, 0)),
    (f'{FRAMEWORKS}/CoreFoundation.framework/Versions/A/CoreFoundation', REQUIRED, (150, 0, 0)),
    ('/usr/lib/libSystem.B.dylib', REQUIRED, (1, 0, 0)),
    ('/usr/lib/libobjc.A.dylib', REQUIRED, (1, 0, 0)),
    ('/usr/lib/libc++.1.dylib', REQUIRED, (1, 0, 0)),
    (f'{FRAMEWORKS}/Cocoa.framework/Versions/A/Cocoa', OPTIONAL, (1, 0, 0)),
    (f'{FRAMEWORKS}/Foundation.framework/Versions/C/Foundation', OPTIONAL, (300, 0, 0)),
    (f'{FRAMEWORKS}/ApplicationServices.framework/Versions/A/ApplicationServices', OPTIONAL, (1, 0, 0)),
    (f'{FRAMEWORKS}/InstantMessage.framework/Versions/A/InstantMessage', OPTIONAL, (1, 0, 0)),
    (f'{FRAMEWORKS}/DiscRecording.framework/Versions/A/DiscRecording', OPTIONAL, (1, 0, 0)),
]


class Libraries(unittest.TestCase):
    def setUp(self):
        self.libraries = dylib.under_test().libraries

    def test_are_these_and_no_others(self):
        self.assertEqual(sorted(name for name, _, _ in LIBRARIES),
                         sorted(library.install_name for library in self.libraries))

    def test_are_optional_where_the_library_must_load_without_them(self):
        self.assertEqual(sorted((name, command) for name, command, _ in LIBRARIES),
                         sorted((library.install_name, library.load_command) for library in self.libraries))

    def test_ask_for_no_compatibility_version_above_that_of_macos_10_9(self):
        highest = {name: compatibility for name, _, compatibility in LIBRARIES}
        for library in self.libraries:
            with self.subTest(library.install_name):
                self.assertIn(library.install_name, highest)
                self.assertLessEqual(library.compatibility, highest[library.install_name])

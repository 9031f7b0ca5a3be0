"""The faults that the tests of the dylib must find can be planted in the sources as they are now."""
import unittest

import building
from planting import planted
from source_faults import SOURCE_FAULTS


class SourceFaults(unittest.TestCase):
    def test_can_be_planted(self):
        for fault in SOURCE_FAULTS:
            with self.subTest(fault.fault):
                self.assertTrue(planted(fault.edits, building.SOURCES))

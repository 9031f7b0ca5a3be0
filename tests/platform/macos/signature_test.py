"""The dylib's signature: arm64 runs no page of code whose hash is not in it. Nobody signs but the linker."""
import hashlib
import struct
import unittest
from collections import namedtuple

import architectures
import dylib

# Numbers of a signature are big-endian.
SUPER_BLOB, CODE_DIRECTORY_BLOB = 0xFADE0CC0, 0xFADE0C02
CODE_DIRECTORY_SLOT = 0
AD_HOC, LINKER_SIGNED = 0x2, 0x20000
SHA256 = 2

CodeDirectory = namedtuple('CodeDirectory', 'magic length version flags hash_offset identifier_offset special_slots '
                                            'slots limit hash_size hash_type platform page_shift spare scatter team '
                                            'spare3 long_limit executable_start executable_size executable_flags')


class Signature(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()
        self.commands = self.dylib.commands('LC_CODE_SIGNATURE')

    def blob(self):
        """The signature's bytes."""
        if not self.commands:
            self.skipTest('the dylib is not signed')
        start, size = (int(self.commands[0].fields[name]) for name in ('dataoff', 'datasize'))
        return self.dylib.bytes[start:start + size]

    def directory(self):
        """The code directory, and its bytes."""
        offset = struct.unpack_from('>II', self.blob(), 12)[1]
        data = self.blob()[offset:]
        return CodeDirectory._make(struct.unpack_from('>9I4B4I4Q', data)), data

    def test_is_there_where_the_processor_asks_for_it(self):
        self.assertEqual(architectures.under_test().signed, len(self.commands) == 1)

    def test_ends_the_file(self):
        fields = self.blob() and self.commands[0].fields
        self.assertEqual(0, int(fields['dataoff']) % 16)
        self.assertEqual(len(self.dylib.bytes), int(fields['dataoff']) + int(fields['datasize']))

    def test_holds_hashes_of_pages_alone(self):
        magic, length, count, slot = struct.unpack_from('>4I', self.blob())
        self.assertEqual((SUPER_BLOB, 1, CODE_DIRECTORY_SLOT), (magic, count, slot))
        self.assertLessEqual(length, len(self.blob()))
        directory, _ = self.directory()
        self.assertEqual((CODE_DIRECTORY_BLOB, 0), (directory.magic, directory.special_slots))

    def test_names_nobody(self):
        directory, _ = self.directory()
        self.assertEqual((AD_HOC | LINKER_SIGNED, 0), (directory.flags, directory.team))

    def test_identifies_the_dylib_by_its_file_name(self):
        directory, data = self.directory()
        name = data[directory.identifier_offset:data.index(0, directory.identifier_offset)]
        self.assertEqual(self.dylib.path.name, name.decode())

    def test_covers_the_whole_file_before_it(self):
        directory, _ = self.directory()
        limit = int(self.commands[0].fields['dataoff'])
        self.assertEqual((limit, 0), (directory.limit, directory.long_limit))
        self.assertEqual(-(-limit >> directory.page_shift), directory.slots)

    def test_knows_where_the_code_is(self):
        directory, _ = self.directory()
        text = next(segment for segment in self.dylib.segments if segment.name == '__TEXT')
        self.assertEqual((text.file_offset, text.file_size), (directory.executable_start, directory.executable_size))

    def test_has_the_right_hash_of_each_page(self):
        directory, data = self.directory()
        self.assertEqual((SHA256, hashlib.sha256().digest_size, 12),
                         (directory.hash_type, directory.hash_size, directory.page_shift))
        page_size = 1 << directory.page_shift
        pages = [self.dylib.bytes[start:min(start + page_size, directory.limit)]
                 for start in range(0, directory.limit, page_size)]
        hashes = [data[start:start + directory.hash_size] for start in
                  range(directory.hash_offset, directory.hash_offset + directory.slots * directory.hash_size,
                        directory.hash_size)]
        self.assertEqual([hashlib.sha256(page).digest() for page in pages], hashes)

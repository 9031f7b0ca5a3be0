"""The one Cocoa class that the dylib defines, as the Objective-C runtime reads it."""
import unittest
from collections import namedtuple

import architectures
import dylib

META_CLASS = 1          # flag of a class's read-only data
OBJECT_SIZE = 8         # an NSObject holds its class alone
CLASS_OBJECT_SIZE = 40

# In the order of the class's method list.
METHODS = [
    ('copyWithZone:', '@24@0:8^{_NSZone=}16'),
    ('GotNotification:', 'v24@0:8@16'),
    ('GotNotificationOnMainThread:', 'v24@0:8@16'),
    ('initWithTarget:', '@24@0:8^{REALobjectStruct=}16'),
]
# Name, type, offset, alignment as a power of two, size.
INSTANCE_VARIABLES = [
    ('target', '^{REALobjectStruct=}', 8, 3, 8),
]
# Lists by which a module declares more than classes: categories, protocols, and what runs code at load.
LISTS_OF_OTHER_THINGS = ['__objc_catlist', '__objc_catlist2', '__objc_protolist', '__objc_protorefs',
                         '__objc_nlclslist', '__objc_nlcatlist']

ReadOnlyData = namedtuple('ReadOnlyData', 'flags start size name methods protocols variables properties')


class ObserverClass(unittest.TestCase):
    def setUp(self):
        self.dylib = dylib.under_test()
        classes = self.dylib.section(architectures.under_test().constants, '__objc_classlist')
        self.assertIsNotNone(classes)
        self.assertEqual(8, classes.size, 'one class is listed')
        self.address = self.dylib.pointer(classes.address)
        self.meta_address = self.dylib.pointer(self.address)

    def read_only_data(self, class_address):
        data = self.dylib.pointer(class_address + 32)
        return ReadOnlyData(self.dylib.integer(data, 4), self.dylib.integer(data + 4, 4),
                            self.dylib.integer(data + 8, 4), self.dylib.string(self.dylib.pointer(data + 24)),
                            *(self.dylib.pointer(data + offset) for offset in (32, 40, 48, 64)))

    def strings(self, address, count):
        return tuple(self.dylib.string(self.dylib.pointer(address + 8 * index)) for index in range(count))

    def test_is_the_only_class(self):
        self.assertEqual('NSNotificationObserver', self.read_only_data(self.address).name)
        self.assertEqual('NSNotificationObserver', self.read_only_data(self.meta_address).name)

    def test_derives_from_nsobject(self):
        self.assertEqual('_OBJC_CLASS_$_NSObject', self.dylib.symbol_at(self.address + 8))
        self.assertEqual('_OBJC_METACLASS_$_NSObject', self.dylib.symbol_at(self.meta_address + 8))
        self.assertEqual('_OBJC_METACLASS_$_NSObject', self.dylib.symbol_at(self.meta_address))

    def test_instances_hold_the_variable_alone(self):
        data = self.read_only_data(self.address)
        self.assertEqual((OBJECT_SIZE, OBJECT_SIZE + 8), (data.start, data.size))
        data = self.read_only_data(self.meta_address)
        self.assertEqual((CLASS_OBJECT_SIZE, CLASS_OBJECT_SIZE), (data.start, data.size))

    def test_is_distinguished_from_its_metaclass(self):
        self.assertEqual(0, self.read_only_data(self.address).flags & META_CLASS)
        self.assertEqual(META_CLASS, self.read_only_data(self.meta_address).flags & META_CLASS)

    def test_has_four_methods_in_order_with_their_encodings(self):
        methods = self.read_only_data(self.address).methods
        self.assertEqual((24, len(METHODS)), (self.dylib.integer(methods, 4), self.dylib.integer(methods + 4, 4)))
        self.assertEqual(METHODS, [self.strings(methods + 8 + 24 * index, 2) for index in range(len(METHODS))])

    def test_methods_are_functions_of_their_own(self):
        methods = self.read_only_data(self.address).methods
        functions = [self.dylib.pointer(methods + 8 + 24 * index + 16) for index in range(len(METHODS))]
        self.assertEqual(len(METHODS), len(set(functions)))
        self.assertLessEqual(set(functions), set(self.dylib.function_starts))

    def test_has_no_class_methods(self):
        self.assertIsNone(self.read_only_data(self.meta_address).methods)

    def test_has_one_instance_variable(self):
        variables = self.read_only_data(self.address).variables
        self.assertEqual((32, len(INSTANCE_VARIABLES)),
                         (self.dylib.integer(variables, 4), self.dylib.integer(variables + 4, 4)))
        found = []
        for index in range(len(INSTANCE_VARIABLES)):
            entry = variables + 8 + 32 * index
            found.append((*self.strings(entry + 8, 2), self.dylib.integer(self.dylib.pointer(entry), 4),
                          self.dylib.integer(entry + 24, 4), self.dylib.integer(entry + 28, 4)))
        self.assertEqual(INSTANCE_VARIABLES, found)
        self.assertIsNone(self.read_only_data(self.meta_address).variables)

    def test_adopts_no_protocols_and_declares_no_properties(self):
        for address in (self.address, self.meta_address):
            data = self.read_only_data(address)
            self.assertEqual((None, None), (data.protocols, data.properties))

    def test_dylib_has_no_categories_protocols_or_load_methods(self):
        self.assertEqual([], [section.name for section in self.dylib.sections
                              if section.name in LISTS_OF_OTHER_THINGS])

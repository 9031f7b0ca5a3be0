// Dictionaries keyed by address, and Cocoa's through Core Foundation's functions.
#include "tests/platform/gnustep/port_testing.h"

using namespace port_testing;

namespace {

using OwnedDictionary = Owned<CFMutableDictionaryRef>;

OwnedDictionary NewAddressDictionary()
{
    return OwnedDictionary(CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr));
}

NSMutableDictionary *AsCocoa(const OwnedDictionary &dictionary)
{
    return (NSMutableDictionary *)dictionary.get();
}

} // namespace

TEST(AddressDictionary, ComparesKeysByAddress)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    NSMutableString *const key = [NSMutableString stringWithString:@"key"];
    NSMutableString *const equalKey = [NSMutableString stringWithString:@"key"];
    const int value = 1, otherValue = 2;
    CFDictionarySetValue(dictionary.get(), key, &value);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), key), &value);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), equalKey), nullptr);

    CFDictionarySetValue(dictionary.get(), equalKey, &otherValue);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 2);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), key), &value);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), equalKey), &otherValue);
}

TEST(AddressDictionary, RetainsNothing)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    NSObject *const key = [[NSObject alloc] init];
    NSObject *const value = [[NSObject alloc] init];
    CFDictionarySetValue(dictionary.get(), key, value);
    EXPECT_EQ([key retainCount], 1U);
    EXPECT_EQ([value retainCount], 1U);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), key), value);
    EXPECT_EQ([value retainCount], 1U);
    CFDictionaryRemoveValue(dictionary.get(), key);
    EXPECT_EQ([key retainCount], 1U);
    EXPECT_EQ([value retainCount], 1U);
    [key release];
    [value release];
}

TEST(AddressDictionary, OutlivesItsKeysAndValues)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    NSObject *const key = [[NSObject alloc] init];
    const void *const address = key;
    CFDictionarySetValue(dictionary.get(), key, key);
    [key release];
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), address), address);
    EXPECT_EQ([[AsCocoa(dictionary) description] rangeOfString:@"1 entries"].length, 9U);
    const OwnedDictionary copy((CFMutableDictionaryRef)[AsCocoa(dictionary) mutableCopy]);
    EXPECT_EQ(CFDictionaryGetValue(copy.get(), address), address);
    EXPECT_TRUE([AsCocoa(copy) isEqual:AsCocoa(dictionary)]);
    CFDictionaryRemoveValue(dictionary.get(), address);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 0);
    EXPECT_EQ(CFDictionaryGetCount(copy.get()), 1);
    EXPECT_FALSE([AsCocoa(copy) isEqual:AsCocoa(dictionary)]);
}

TEST(AddressDictionary, ReplacesTheValueOfAKey)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    const int key = 0, first = 1, second = 2;
    CFDictionarySetValue(dictionary.get(), &key, &first);
    CFDictionarySetValue(dictionary.get(), &key, &second);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 1);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), &key), &second);
}

TEST(AddressDictionary, DistinguishesANullValueFromNone)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    const int key = 0, other = 0;
    CFDictionarySetValue(dictionary.get(), &key, nullptr);
    const void *value = &other;
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary.get(), &key, &value));
    EXPECT_EQ(value, nullptr);
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary.get(), &key, nullptr));
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary.get(), &other, &value));
    CFDictionarySetValue(dictionary.get(), nullptr, &other);
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), nullptr), &other);
}

TEST(AddressDictionary, IsACocoaDictionary)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    NSString *const key = @"key";
    [AsCocoa(dictionary) setObject:@"value" forKey:key];
    EXPECT_EQ(CFDictionaryGetValue(dictionary.get(), key), (const void *)@"value");
    EXPECT_EQ([AsCocoa(dictionary) count], 1U);
    EXPECT_EQ([AsCocoa(dictionary) objectForKey:key], @"value");
    EXPECT_EQ([[AsCocoa(dictionary) allKeys] objectAtIndex:0], key);
    [AsCocoa(dictionary) removeObjectForKey:key];
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 0);
}

TEST(AddressDictionary, HoldsManyEntries)
{
    const OwnedDictionary dictionary = NewAddressDictionary();
    std::string keys(100000, 'x');
    for (const char &key : keys)
        CFDictionarySetValue(dictionary.get(), &key, &key);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 100000);
    for (const char &key : keys)
        ASSERT_EQ(CFDictionaryGetValue(dictionary.get(), &key), &key);
    for (const char &key : keys)
        CFDictionaryRemoveValue(dictionary.get(), &key);
    EXPECT_EQ(CFDictionaryGetCount(dictionary.get()), 0);
}

TEST(CocoaDictionary, WorksThroughCoreFoundation)
{
    NSMutableDictionary *const cocoa = [NSMutableDictionary dictionary];
    const CFMutableDictionaryRef dictionary = (CFMutableDictionaryRef)cocoa;
    CFDictionarySetValue(dictionary, @"key", @"value");
    EXPECT_TRUE([[cocoa objectForKey:@"key"] isEqual:@"value"]);
    EXPECT_EQ(CFDictionaryGetCount(dictionary), 1);

    NSMutableString *const equalKey = [NSMutableString stringWithString:@"key"];
    EXPECT_EQ(CFDictionaryGetValue(dictionary, equalKey), (const void *)@"value");
    const void *value = nullptr;
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary, equalKey, &value));
    EXPECT_EQ(value, (const void *)@"value");
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary, @"other", &value));

    CFDictionaryRemoveValue(dictionary, @"other");
    CFDictionaryRemoveValue(dictionary, @"key");
    EXPECT_EQ([cocoa count], 0U);
}

TEST(CocoaDictionary, RetainsItsValues)
{
    NSMutableDictionary *const cocoa = [[NSMutableDictionary alloc] init];
    NSObject *const value = [[NSObject alloc] init];
    CFDictionarySetValue((CFMutableDictionaryRef)cocoa, @"key", value);
    EXPECT_EQ([value retainCount], 2U);
    [cocoa release];
    EXPECT_EQ([value retainCount], 1U);
    [value release];
}

TEST(CocoaDictionary, IgnoresNullKeysAndValues)
{
    NSMutableDictionary *const cocoa = [NSMutableDictionary dictionary];
    const CFMutableDictionaryRef dictionary = (CFMutableDictionaryRef)cocoa;
    CFDictionarySetValue(dictionary, nullptr, @"value");
    CFDictionarySetValue(dictionary, @"key", nullptr);
    CFDictionaryRemoveValue(dictionary, nullptr);
    EXPECT_EQ(CFDictionaryGetValue(dictionary, nullptr), nullptr);
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary, nullptr, nullptr));
    EXPECT_EQ([cocoa count], 0U);
}

TEST(NullDictionary, HoldsNothing)
{
    const void *value = nullptr;
    CFDictionarySetValue(nullptr, @"key", @"value");
    CFDictionaryRemoveValue(nullptr, @"key");
    EXPECT_EQ(CFDictionaryGetCount(nullptr), 0);
    EXPECT_EQ(CFDictionaryGetValue(nullptr, @"key"), nullptr);
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(nullptr, @"key", &value));
}

TEST(NewDictionary, WithCallbacksIsRefused)
{
    const char callbacks[64] = {};
    EXPECT_EQ(CFDictionaryCreateMutable(
                  nullptr, 0, reinterpret_cast<const CFDictionaryKeyCallBacks *>(callbacks), nullptr),
              nullptr);
    EXPECT_EQ(CFDictionaryCreateMutable(nullptr, 0, nullptr,
                                        reinterpret_cast<const CFDictionaryValueCallBacks *>(callbacks)),
              nullptr);
}

// Cocoa objects and dictionaries become host values.
#include "bridge/to_host/object_to_variant.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/dictionary_methods.h"
#include "bridge/to_host/dictionary_to_host.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using ObjectToVariant = LinkedTest;

Value Convert(id object)
{
    return Owned(NewVariantFromNSObject(object));
}

Value ConvertDictionary(NSDictionary *dictionary)
{
    return Owned(AsInstance(NSDictionaryRB(dictionary)));
}

} // namespace

TEST_F(ObjectToVariant, NilIsNull)
{
    Start();
    EXPECT_EQ(NewVariantFromNSObject(nil), nullptr);
}

TEST_F(ObjectToVariant, StringIsAString)
{
    Start();
    const Value variant = Convert(@"text");
    EXPECT_EQ(variant.Code(), qzlhost::code::String);
    EXPECT_EQ(variant.AsString(), "text");
}

TEST_F(ObjectToVariant, EmptyStringIsAVariantOfTheNullString)
{
    Host &host = Start();
    const Value variant = Convert(@"");
    EXPECT_EQ(host.CallsOf("StringToVariant"), 1);
    EXPECT_EQ(variant.AsString(), "");
}

TEST_F(ObjectToVariant, DictionaryHasEveryEntry)
{
    Host &host = Start();
    const Value dictionary = ConvertDictionary(@{@"one" : @"1", @"two" : @"2", @"three" : @"3"});
    ASSERT_EQ(host.DictionaryCount(dictionary), 3);
    EXPECT_EQ(host.DictionaryGet(dictionary, "one").AsString(), "1");
    EXPECT_EQ(host.DictionaryGet(dictionary, "two").AsString(), "2");
    EXPECT_EQ(host.DictionaryGet(dictionary, "three").AsString(), "3");
    EXPECT_EQ(gDictionaryMethods.LastDictionary, nullptr);
}

TEST_F(ObjectToVariant, EmptyDictionaryIsEmpty)
{
    Host &host = Start();
    EXPECT_EQ(host.DictionaryCount(ConvertDictionary([NSDictionary dictionary])), 0);
    EXPECT_EQ(NSDictionaryRB(nil), nullptr);
}

TEST_F(ObjectToVariant, DictionaryWithoutItsSetterStaysEmpty)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.LackMethod("Value(key As Variant, Assigns _value As Variant)");
    });
    EXPECT_EQ(host.DictionaryCount(ConvertDictionary(@{@"key" : @"value"})), 0);
}

TEST_F(ObjectToVariant, HostWithoutDictionariesGivesNull)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginNewInstance"); });
    EXPECT_EQ(NSDictionaryRB(@{@"key" : @"value"}), nullptr);
}

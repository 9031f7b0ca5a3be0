// Host variants and Dictionaries become Cocoa objects.
#include "bridge/to_cocoa/variant_to_object.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/dictionary_methods.h"
#include "bridge/to_cocoa/dictionary_to_cocoa.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using VariantToObject = LinkedTest;

/// A host variant that boxes the string.
Value Boxed(Host &host, const Value &string)
{
    using StringToVariant = REALobject (*)(REALstring);
    const auto box = reinterpret_cast<StringToVariant>(host.Resolver()("StringToVariant"));
    return Value::Adopt(reinterpret_cast<qzlhost::Instance *>(box(StringOf(string))));
}

NSDictionary *Convert(const Value &dictionary)
{
    return NewNSDictionary(reinterpret_cast<REALdictionary>(ObjectOf(dictionary)));
}

} // namespace

TEST_F(VariantToObject, NilIsNilAndTheHostIsNotAskedForItsType)
{
    Host &host = Start();
    EXPECT_EQ(GetVariantAsNSObject(nullptr), nil);
    EXPECT_TRUE(host.Trace().empty());
}

TEST_F(VariantToObject, StringIsAString)
{
    Host &host = Start();
    const Value variant = Boxed(host, "text");
    EXPECT_TRUE([GetVariantAsNSObject(ObjectOf(variant)) isEqual:@"text"]);
}

TEST_F(VariantToObject, EmptyStringIsNeverNil)
{
    Host &host = Start();
    for (const Value &empty : {Value::EmptyString(), Value::StringOfBytes("", qzlhost::encoding::UTF8)}) {
        const Value variant = Boxed(host, empty);
        EXPECT_TRUE([GetVariantAsNSObject(ObjectOf(variant)) isEqual:@""]);
    }
}

TEST_F(VariantToObject, TypeCodeComesFromThePropertyWhereThereIsNoMethod)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("REALLoadGlobalMethod"); });
    const Value variant = Boxed(host, "text");
    EXPECT_TRUE([GetVariantAsNSObject(ObjectOf(variant)) isEqual:@"text"]);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

TEST_F(VariantToObject, DictionaryHasEveryEntry)
{
    Host &host = Start();
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "one", "1");
    host.DictionarySet(dictionary, "two", "2");
    host.DictionarySet(dictionary, "nothing", Value());
    NSDictionary *const converted = Convert(dictionary);
    ASSERT_EQ([converted count], 3u);
    EXPECT_TRUE([[converted objectForKey:@"one"] isEqual:@"1"]);
    EXPECT_TRUE([[converted objectForKey:@"two"] isEqual:@"2"]);
    EXPECT_EQ([converted objectForKey:@"nothing"], [NSNull null]);
    EXPECT_EQ(gDictionaryMethods.LastDictionary, nullptr);
}

TEST_F(VariantToObject, EmptyDictionaryIsImmutable)
{
    Host &host = Start();
    NSDictionary *const converted = Convert(host.NewDictionary());
    ASSERT_NE(converted, nil);
    EXPECT_EQ([converted count], 0u);
    EXPECT_FALSE([converted isKindOfClass:[NSMutableDictionary class]]);
    EXPECT_EQ(NewNSDictionary(nullptr), nil);
}

TEST_F(VariantToObject, DictionaryWithoutItsKeysIsEmpty)
{
    Host &host =
        Start(2024.01, [](Host &unloaded) { unloaded.LackMethod("Key(index As Integer) As Variant"); });
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "key", "value");
    EXPECT_EQ([Convert(dictionary) count], 0u);
}

TEST_F(VariantToObject, DictionaryWithoutItsValuesHoldsNulls)
{
    Host &host =
        Start(2024.01, [](Host &unloaded) { unloaded.LackMethod("Value(key As Variant) As Variant"); });
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "key", "value");
    EXPECT_EQ([Convert(dictionary) objectForKey:@"key"], [NSNull null]);
}

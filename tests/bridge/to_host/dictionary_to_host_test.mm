// Cocoa dictionaries become host Dictionaries.
#include "bridge/to_host/dictionary_to_host.h"

#include "tests/support/conversion_doubles.h"
#include "tests/support/host_declarations.h"
#include "tests/support/ordered_dictionary.h"
#include "tests/support/raising.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

using DictionaryToHost = LinkedTest;

/// In universal time, so that dates have known fields.
class DictionaryKeyToHost : public LinkedTest {
protected:
    Host &StartInUniversalTime()
    {
        Host &host = Start();
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:0]];
        return host;
    }
};

} // namespace

TEST_F(DictionaryToHost, EmptyDictionaryIsEmptyAndLoadsNoMethods)
{
    Host &host = Start();
    const Value dictionary = Convert([NSDictionary dictionary]);
    EXPECT_EQ(host.ClassOf(dictionary), "Dictionary");
    EXPECT_EQ(host.DictionaryCount(dictionary), 0);
    EXPECT_EQ(host.References(dictionary), 1);
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 0);
}

TEST_F(DictionaryToHost, StringKeyHasItsNumber)
{
    Host &host = Start();
    const Value dictionary = Convert(@{@"a" : @1});
    ASSERT_EQ(host.DictionaryCount(dictionary), 1);
    EXPECT_EQ(host.DictionaryKey(dictionary, 0).Code(), code::String);
    EXPECT_EQ(host.DictionaryGet(dictionary, "a").Code(), code::Int64);
    EXPECT_EQ(host.DictionaryGet(dictionary, "a").AsInteger(), 1);
}

TEST_F(DictionaryKeyToHost, KeysOfEveryKindKeepTheirKind)
{
    Host &host = StartInUniversalTime();
    NSArray *const keys = @[
        @"text", @7, @2.5, [NSNumber numberWithFloat:0.5F], [NSNumber numberWithBool:YES],
        [NSDate dateWithTimeIntervalSince1970:0], [NSData dataWithBytes:"abc" length:3], @[ @"array" ],
        @{@"a" : @"dictionary"}, @"\u00e9\U0001F600"
    ];
    constexpr int64_t kCodes[] = {code::String,  code::Int64, code::Double, code::Single,
                                  code::Boolean, code::Date,  code::Object, code::Array + code::Object,
                                  code::Object,  code::String};
    const Value dictionary = Convert(OrderedDictionary(keys, keys));
    ASSERT_EQ(host.DictionaryCount(dictionary), static_cast<int64_t>(std::size(kCodes)));
    for (size_t index = 0; index < std::size(kCodes); ++index) {
        const Value key = host.DictionaryKey(dictionary, static_cast<int64_t>(index));
        EXPECT_EQ(key.Code(), kCodes[index]) << index;
        EXPECT_EQ(host.DictionaryGet(dictionary, key).Code(), kCodes[index]) << index;
    }
    EXPECT_EQ(host.DictionaryGet(dictionary, 7).AsInteger(), 7);
    EXPECT_EQ(host.DictionaryGet(dictionary, host.NewDate(1970, 1, 1, 0, 0, 0)).AsString(),
              "1970-01-01 00:00:00");
    EXPECT_EQ(host.DictionaryKey(dictionary, 9).AsString(), "\u00e9\U0001F600");
}

TEST_F(DictionaryToHost, NullAsAKeyIsNil)
{
    Host &host = Start();
    const Value dictionary = Convert(@{[NSNull null] : @"value"});
    ASSERT_EQ(host.DictionaryCount(dictionary), 1);
    EXPECT_TRUE(host.DictionaryKey(dictionary, 0).IsNil());
    EXPECT_EQ(host.DictionaryGet(dictionary, Value()).AsString(), "value");
}

TEST_F(DictionaryToHost, LastOfSeveralKeysThatBecomeNilWins)
{
    Host &host = Start();
    const Value dictionary = Convert(
        OrderedDictionary(@[ [NSNull null], @"other", [NSData data] ], @[ @"first", @"kept", @"last" ]));
    EXPECT_EQ(host.DictionaryCount(dictionary), 2);
    EXPECT_EQ(host.DictionaryGet(dictionary, Value()).AsString(), "last");
    EXPECT_EQ(host.DictionaryGet(dictionary, "other").AsString(), "kept");
}

TEST_F(DictionaryToHost, NullAsAValueIsAnEntryOfNil)
{
    Host &host = Start();
    const Value dictionary = Convert(@{@"nothing" : [NSNull null]});
    EXPECT_EQ(host.DictionaryCount(dictionary), 1);
    EXPECT_TRUE(host.DictionaryGet(dictionary, "nothing").IsNil());
}

TEST_F(DictionaryToHost, KeysAndValuesBelongToTheDictionaryAlone)
{
    Host &host = Start();
    const Value dictionary = Convert(@{@"key" : @[ @1 ]});
    EXPECT_EQ(host.References(host.DictionaryKey(dictionary, 0)), 2) << "the Dictionary's and the test's";
    EXPECT_EQ(host.References(host.DictionaryGet(dictionary, "key")), 2) << "the Dictionary's and the test's";
}

TEST_F(DictionaryToHost, SameContainerTwiceBecomesTwoValues)
{
    Host &host = Start();
    NSArray *const array = @[ @"shared" ];
    NSDictionary *const inner = @{@"in" : @"shared"};
    const Value dictionary =
        Convert(OrderedDictionary(@[ @"a", @"b", @"c", @"d" ], @[ array, array, inner, inner ]));
    const Value first = host.DictionaryGet(dictionary, "c");
    const Value second = host.DictionaryGet(dictionary, "d");
    EXPECT_NE(host.DictionaryGet(dictionary, "a").ObjectPointer(),
              host.DictionaryGet(dictionary, "b").ObjectPointer());
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(host.DictionaryGet(first, "in").AsString(), "shared");
    EXPECT_EQ(host.DictionaryGet(second, "in").AsString(), "shared");
}

TEST_F(DictionaryToHost, AHundredThousandEntriesArrive)
{
    constexpr int kCount = 100'000;
    Host &host = Start();
    NSMutableDictionary *const source = [NSMutableDictionary dictionary];
    for (int number = 0; number < kCount; ++number)
        [source setObject:[NSNumber numberWithInt:number]
                   forKey:[NSString stringWithFormat:@"key %d", number]];
    const Value dictionary = Convert(source);
    ASSERT_EQ(host.DictionaryCount(dictionary), kCount);
    for (int number = 0; number < kCount; ++number)
        ASSERT_EQ(host.DictionaryGet(dictionary, "key " + std::to_string(number)).AsInteger(), number);
}

TEST_F(DictionaryToHost, AThousandDictionariesInEachOtherKeepTheirDepth)
{
    constexpr int kDepth = 1000;
    Host &host = Start();
    NSDictionary *source = [NSDictionary dictionary];
    for (int level = 1; level < kDepth; ++level)
        source = @{@"deeper" : source};
    Value dictionary = Convert(source);
    int depth = 1;
    for (; host.DictionaryCount(dictionary) == 1; ++depth)
        dictionary = host.DictionaryGet(dictionary, "deeper");
    EXPECT_EQ(depth, kDepth);
}

TEST_F(DictionaryToHost, HostWithoutTheSetterGivesEmptyDictionaries)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.LackMethod(kDictionarySetter); });
    const Value dictionary = Convert(@{@"key" : @{@"in" : @1}});
    EXPECT_EQ(host.ClassOf(dictionary), "Dictionary");
    EXPECT_EQ(host.DictionaryCount(dictionary), 0);
}

TEST_F(DictionaryToHost, HostThatLoadsNoMethodsGivesEmptyDictionaries)
{
    Host &host = StartLacking({"REALLoadObjectMethod"});
    EXPECT_EQ(host.DictionaryCount(Convert(@{@"key" : @"value"})), 0);
}

TEST_F(DictionaryToHost, HostWithoutTheOtherMethodsStoresEverything)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.LackMethod(kDictionaryGetter);
        unloaded.LackMethod(kDictionaryKeyGetter);
    });
    EXPECT_EQ(host.DictionaryCount(Convert(@{@"a" : @1, @"b" : @2})), 2);
}

TEST_F(DictionaryToHost, NilIsNull)
{
    Host &host = Start();
    EXPECT_EQ(NSDictionaryRB(nil), nullptr);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

TEST_F(DictionaryToHost, HostWithoutDictionariesGivesNull)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail("PluginNewInstance"); });
    EXPECT_EQ(NewVariantFromNSObject(@{@"key" : @"value"}), nullptr);
    host.Fail("PluginNewInstance", false);
}

TEST_F(DictionaryToHost, CocoaExceptionAtAnEntryLeavesNothingBehind)
{
    Host &host = Start();
    NSDictionary *const broken = OrderedDictionary(@[ @"whole", @"broken" ], @[ @{@"in" : @1}, @2 ]);
    EXPECT_TRUE([ExceptionRaisedBy([&] { NewVariantFromNSObject(broken); }) isEqual:@"Broken"]);
    for (const std::string &string : ArgumentsOf(host, "StringToVariant"))
        EXPECT_EQ(string.find("broken"), std::string::npos)
            << "the value is read before the key is converted";
}

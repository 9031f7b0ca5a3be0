// Whole trees of host values become trees of Cocoa objects.
#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

#include "family/family.h"
#include "tests/bridge/to_cocoa/host_trees.h"
#include "tests/bridge/to_cocoa/member_conversion.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int kTrees = 1000;
constexpr int kDepth = 8;
constexpr size_t kWrappers = 4;

std::string Described(id object)
{
    const char *const text = [[object description] UTF8String];
    return text != nullptr ? text : "nil";
}

template <typename T>
bool AreSameBits(T left, T right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

/// Walks a Cocoa object along the model of it and notes where they differ.
class Comparison {
public:
    explicit Comparison(const std::vector<id> &wrapped) : wrapped_(wrapped) {}

    std::vector<std::string> differences;

    void Compare(const Tree &expected, id actual, const std::string &path)
    {
        if (!IsSame(expected, actual, path))
            differences.push_back(path + ": " + Described(actual) + " of " +
                                  NSStringFromClass([actual class]).UTF8String);
    }

private:
    bool IsSame(const Tree &expected, id actual, const std::string &path)
    {
        switch (expected.kind) {
        case Tree::Kind::Null:
            return actual == [NSNull null];
        case Tree::Kind::Integer:
            return IsNumber(actual, "ilq") && [actual longLongValue] == expected.integer;
        case Tree::Kind::Boolean:
            return actual == [NSNumber numberWithBool:expected.integer != 0];
        case Tree::Kind::Single:
            return IsNumber(actual, "f") && AreSameBits([actual floatValue], expected.single);
        case Tree::Kind::Double:
            return IsNumber(actual, "d") && AreSameBits([actual doubleValue], expected.number);
        case Tree::Kind::Date:
            return IsDate(expected, actual);
        case Tree::Kind::Text:
            return IsText(expected, actual);
        case Tree::Kind::Data:
            return [actual isKindOfClass:[NSData class]] &&
                   std::string(static_cast<const char *>([actual bytes]), [actual length]) == expected.bytes;
        case Tree::Kind::Wrapped:
            return actual == wrapped_.at(expected.wrapped);
        case Tree::Kind::Array:
            return IsArray(expected, actual, path);
        case Tree::Kind::Dictionary:
            return IsDictionary(expected, actual, path);
        }
        return false;
    }

    static bool IsNumber(id actual, const char *types)
    {
        return [actual isKindOfClass:[NSNumber class]] && std::strchr(types, *[actual objCType]) != nullptr;
    }

    static bool IsDate(const Tree &expected, id actual)
    {
        if (![actual isKindOfClass:[NSCalendarDate class]])
            return false;
        const std::array<int64_t, 6> fields = {[actual yearOfCommonEra], [actual monthOfYear],
                                               [actual dayOfMonth],      [actual hourOfDay],
                                               [actual minuteOfHour],    [actual secondOfMinute]};
        return fields == expected.date;
    }

    static bool IsText(const Tree &expected, id actual)
    {
        if (![actual isKindOfClass:[NSString class]])
            return false;
        std::u16string units([actual length], u'\0');
        [actual getCharacters:reinterpret_cast<unichar *>(units.data())];
        return units == expected.text;
    }

    bool IsArray(const Tree &expected, id actual, const std::string &path)
    {
        if (![actual isKindOfClass:[NSMutableArray class]] || [actual count] != expected.elements.size())
            return false;
        for (NSUInteger index = 0; index < [actual count]; ++index)
            Compare(expected.elements[index], [actual objectAtIndex:index],
                    path + "[" + std::to_string(index) + "]");
        return true;
    }

    bool IsDictionary(const Tree &expected, id actual, const std::string &path)
    {
        if (![actual isKindOfClass:[NSDictionary class]] || [actual count] != expected.entries.size())
            return false;
        for (const auto &[key, value] : expected.entries) {
            const id cocoaKey = KeyOf(key, actual);
            Compare(value, [actual objectForKey:cocoaKey], path + "/" + Described(cocoaKey));
        }
        return true;
    }

    /// The key to look for in this dictionary.
    static id KeyOf(const Tree &key, NSDictionary *dictionary)
    {
        switch (key.kind) {
        case Tree::Kind::Text:
            return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(key.text.data())
                                           length:key.text.size()];
        case Tree::Kind::Integer:
        case Tree::Kind::Boolean:
            return [NSNumber numberWithLongLong:key.integer];
        case Tree::Kind::Double:
            return [NSNumber numberWithDouble:key.number];
        case Tree::Kind::Date:
            for (const id candidate in [dictionary allKeys])
                if (IsDate(key, candidate))
                    return candidate;
            return nil;
        default:
            return [NSNull null];
        }
    }

    const std::vector<id> &wrapped_;
};

class Trees : public MemberConversion {
protected:
    /// A host with a class that means nothing to Cocoa and with wrappers of Cocoa objects.
    Host &StartWithWrappers()
    {
        Host &host = Start();
        DefineClass("Unrelated", 0);
        DefineClass("NSTimerQZL", sizeof(id));
        for (size_t index = 0; index < kWrappers; ++index) {
            wrapped_.push_back([[[NSObject alloc] init] autorelease]);
            wrappers_.push_back(host.New("NSTimerQZL"));
            *static_cast<id *>(host.InstanceData(wrappers_.back())) = wrapped_.back();
        }
        return host;
    }

    void TearDown() override
    {
        wrappers_.clear();
        MemberConversion::TearDown();
    }

    std::vector<id> wrapped_;
    std::vector<Value> wrappers_;

private:
    void DefineClass(const char *name, uint64_t dataSize)
    {
        qzlhost::ClassDefinition definition;
        definition.name = name;
        definition.dataSize = dataSize;
        host().DefineClass(std::move(definition));
    }
};

std::vector<int64_t> ReferencesOf(const Host &host, const std::vector<Value> &values)
{
    std::vector<int64_t> references;
    for (const Value &value : values)
        references.push_back(host.References(value));
    return references;
}

std::vector<NSUInteger> RetainCountsOf(const std::vector<id> &objects)
{
    std::vector<NSUInteger> counts;
    for (const id object : objects)
        counts.push_back([object retainCount]);
    return counts;
}

} // namespace

TEST_F(Trees, EveryTreeBecomesItsModelAndGivesEveryReferenceBack)
{
    Host &host = StartWithWrappers();
    int deepest = 0;
    for (uint64_t seed = 1; seed <= kTrees && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TreeGrower grower(host, seed, wrappers_);
        const Grown grown = grower.GrowDictionary(kDepth);
        deepest = std::max(deepest, grower.Depth());
        const std::vector<int64_t> references = ReferencesOf(host, grower.Values());
        const std::vector<NSUInteger> retains = RetainCountsOf(wrapped_);
        {
            const qzlhost::AutoreleasePool pool;
            Comparison comparison(wrapped_);
            comparison.Compare(grown.tree, Convert(grown.value), "");
            EXPECT_THAT(comparison.differences, ::testing::IsEmpty());
        }
        EXPECT_EQ(ReferencesOf(host, grower.Values()), references);
        EXPECT_EQ(RetainCountsOf(wrapped_), retains);
        host.ClearTrace();
    }
    EXPECT_EQ(deepest, kDepth);
}

TEST_F(Trees, EntriesAfterANestedDictionaryAreAllThere)
{
    Host &host = Start();
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "inner", 1);
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "first", inner);
    host.DictionarySet(outer, "second", 2);
    host.DictionarySet(outer, "third", inner);
    host.DictionarySet(outer, "fourth", host.NewDictionary());
    host.DictionarySet(outer, "fifth", 5);

    NSDictionary *const converted = Convert(outer);

    NSDictionary *const nested = @{@"inner" : @1};
    NSDictionary *const expected =
        @{@"first" : nested,
          @"second" : @2,
          @"third" : nested,
          @"fourth" : @{},
          @"fifth" : @5};
    EXPECT_TRUE([converted isEqual:expected]) << Described(converted);
}

TEST_F(Trees, NestedDictionaryTakesTheMethodsOver)
{
    Host &host = Start();
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "inner", 1);
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "first", inner);
    host.DictionarySet(outer, "second", 2);
    host.DictionarySet(outer, "third", 3);
    host.ClearTrace();

    Convert(outer);

    int loads = 0;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.arguments.find("Key(index As Integer) As Variant") != std::string::npos)
            ++loads;
    EXPECT_EQ(loads, 3) << "for the outer, the inner, and the outer again";
}

TEST_F(Trees, NestedDictionaryOfAnotherClassIsReadByItsOwnMethodsAndTheOuterByIts)
{
    Host &host = Start();
    qzlhost::ClassDefinition definition;
    definition.name = "ProgramDictionary";
    definition.super = "Dictionary";
    definition.methods = {
        {"Key(index As Integer) As Variant",
         [](const Value &, const std::vector<Value> &) { return Value("own key"); }},
        {"Value(key As Variant) As Variant",
         [](const Value &, const std::vector<Value> &) { return Value("own value"); }},
    };
    host.DefineClass(std::move(definition));
    const Value inner = host.New("ProgramDictionary");
    host.DictionarySet(inner, "key", "value");
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "first", inner);
    host.DictionarySet(outer, "second", 2);

    NSDictionary *const converted = Convert(outer);

    NSDictionary *const expected = @{@"first" : @{@"own key" : @"own value"}, @"second" : @2};
    EXPECT_TRUE([converted isEqual:expected]) << Described(converted);
}

TEST_F(Trees, SameDictionaryTwiceIsConvertedTwice)
{
    Host &host = Start();
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "key", "value");
    const Value array = host.NewArray(qzlhost::code::Object, {inner, inner});
    NSArray *const converted = Convert(array);
    EXPECT_TRUE([converted isEqual:(@[ @{@"key" : @"value"}, @{@"key" : @"value"} ])]);
    EXPECT_NE([converted objectAtIndex:0], [converted objectAtIndex:1]);
}

TEST_F(Trees, LaterOfTwoKeysThatAreEqualToCocoaWins)
{
    Host &host = Start();
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, true, "boolean");
    host.DictionarySet(dictionary, 1, "number");
    ASSERT_EQ(host.DictionaryCount(dictionary), 2);
    NSDictionary *const converted = Convert(dictionary);
    EXPECT_TRUE([converted isEqual:(@{@1 : @"number"})]) << Described(converted);
}

TEST_F(Trees, NilKeyIsSkippedAndKeyWithoutACocoaObjectIsNull)
{
    Host &host = StartWithWrappers();
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, Value(), "nil key");
    host.DictionarySet(dictionary, host.New("Unrelated"), "first");
    host.DictionarySet(dictionary, host.New("Unrelated"), "second");
    host.DictionarySet(dictionary, "key", "third");
    NSDictionary *const expected = @{[NSNull null] : @"second", @"key" : @"third"};
    EXPECT_TRUE([Convert(dictionary) isEqual:expected]);
}

TEST_F(Trees, CocoaExceptionInTheMiddleLeavesNothingBehind)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    const Value shared = host.NewArray(qzlhost::code::Int64, {1});
    const Value refused = host.NewArray(qzlhost::code::Object, {shared, Value()});
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "shared", shared);
    host.DictionarySet(inner, "refused", refused);
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "before", shared);
    host.DictionarySet(outer, "inner", inner);
    host.DictionarySet(outer, "after", shared);
    const std::vector<Value> values = {shared, refused, inner, outer};
    const std::vector<int64_t> references = ReferencesOf(host, values);

    EXPECT_TRUE([[ExceptionOf(outer) name] isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(ReferencesOf(host, values), references);
    host.ArraySet(refused, 1, "now convertible");
    EXPECT_EQ([Convert(outer) count], 3u);
    EXPECT_EQ([[Convert(outer) objectForKey:@"inner"] count], 2u);
}

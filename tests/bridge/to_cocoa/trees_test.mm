// Whole trees of host values become trees of Cocoa objects.
#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/host_declarations.h"
#include "tests/support/random_values.h"
#include "tests/support/trace.h"
#include "tests/support/value_model.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int kTrees = 1000;
constexpr int kDepth = 8;
/// Host classes of the family that wrap Cocoa objects.
constexpr const char *kWrapperNames[] = {"NSTimerQZL", "NSTaskQZL", "NSMenuQZL", "NSErrorQZL"};

std::string Described(id object)
{
    const char *const text = [[object description] UTF8String];
    return text != nullptr ? text : "nil";
}

/// How deep Dictionaries are nested.
int DepthOf(const Json &model)
{
    int depth = 0;
    if (model.is_structured())
        for (const Json &part : model)
            depth = std::max(depth, DepthOf(part));
    return depth + (model.is_object() && model.contains("dictionary") ? 1 : 0);
}

/// The wrapped Cocoa objects by the host classes of their wrappers.
using Wrapped = std::map<std::string, id>;

/// Compares a Cocoa object with its model and records the differences.
class Comparison {
public:
    explicit Comparison(const Wrapped &wrapped) : wrapped_(wrapped) {}

    const std::vector<std::string> &Differences() const { return differences_; }

    void Compare(const Json &expected, id actual, const std::string &path)
    {
        const bool isSame = expected.is_null()
                                ? actual == [NSNull null]
                                : IsSame(expected.begin().key(), expected.front(), actual, path);
        if (!isSame)
            differences_.push_back(path + ": " + Described(actual) + " of " +
                                   NSStringFromClass([actual class]).UTF8String);
    }

private:
    bool IsSame(const std::string &type, const Json &content, id actual, const std::string &path)
    {
        if (type == "int32" || type == "integer" || type == "colour")
            return IsNumber(actual, "ilq") && [actual longLongValue] == content;
        if (type == "boolean")
            return actual == [NSNumber numberWithBool:content.get<bool>()];
        if (type == "single")
            return IsNumber(actual, "f") && content == DigitsOf(static_cast<double>([actual floatValue]));
        if (type == "double" || type == "currency")
            return IsNumber(actual, "d") && content == DigitsOf([actual doubleValue]);
        if (type == "date")
            return IsDate(content, actual);
        if (type == "memory")
            return [actual isKindOfClass:[NSData class]] &&
                   content == Hexadecimal({static_cast<const char *>([actual bytes]), [actual length]});
        if (type == "folder item")
            return [actual isKindOfClass:[NSURL class]] && IsText(content, [actual path]);
        if (type == "object")
            return actual == wrapped_.at(content);
        if (type == "array")
            return IsArray(content, actual, path);
        if (type == "dictionary")
            return IsDictionary(content, actual, path);
        return IsText(content, actual);
    }

    static bool IsNumber(id actual, const char *types)
    {
        return [actual isKindOfClass:[NSNumber class]] && std::strchr(types, *[actual objCType]) != nullptr;
    }

    static bool IsDate(const Json &wallClock, id actual)
    {
        return [actual isKindOfClass:[NSCalendarDate class]] &&
               IsText(wallClock, [actual descriptionWithCalendarFormat:@"%Y-%m-%d %H:%M:%S"]);
    }

    static bool IsText(const Json &utf8, id actual)
    {
        if (![actual isKindOfClass:[NSString class]])
            return false;
        NSData *const bytes = [actual dataUsingEncoding:NSUTF8StringEncoding];
        return utf8 == std::string(static_cast<const char *>([bytes bytes]), [bytes length]);
    }

    bool IsArray(const Json &elements, id actual, const std::string &path)
    {
        if (![actual isKindOfClass:[NSMutableArray class]] || [actual count] != elements.size())
            return false;
        for (NSUInteger index = 0; index < [actual count]; ++index)
            Compare(elements[index], [actual objectAtIndex:index], path + "[" + std::to_string(index) + "]");
        return true;
    }

    bool IsDictionary(const Json &entries, id actual, const std::string &path)
    {
        if (![actual isKindOfClass:[NSDictionary class]] || [actual count] != entries.size())
            return false;
        for (const Json &entry : entries) {
            const id key = KeyOf(entry.at(0), actual);
            Compare(entry.at(1), [actual objectForKey:key], path + "/" + Described(key));
        }
        return true;
    }

    /// The dictionary's key with this model; nil for none.
    id KeyOf(const Json &model, NSDictionary *dictionary)
    {
        for (const id candidate in dictionary) {
            Comparison comparison(wrapped_);
            comparison.Compare(model, candidate, "");
            if (comparison.differences_.empty())
                return candidate;
        }
        return nil;
    }

    const Wrapped &wrapped_;
    std::vector<std::string> differences_;
};

class Trees : public MemberConversion {
protected:
    /// A host with a class without a Cocoa counterpart and with wrappers of Cocoa objects, in universal time,
    /// where every wall-clock time exists once.
    Host &StartWithWrappers()
    {
        Host &host = Start();
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:0]];
        host.DefineClass({"ProgramObject", ""});
        for (const char *name : kWrapperNames) {
            DefineWrapperClass(host, name);
            wrapped[name] = [[[NSObject alloc] init] autorelease];
            wrappers.push_back(WrapperOf(host, name, wrapped[name]));
        }
        return host;
    }

    void TearDown() override
    {
        wrappers.clear();
        MemberConversion::TearDown();
    }

    Wrapped wrapped;
    std::vector<Value> wrappers;
};

std::vector<int64_t> ReferencesOf(const Host &host, const std::vector<Value> &values)
{
    std::vector<int64_t> references;
    for (const Value &value : values)
        references.push_back(host.References(value));
    return references;
}

std::vector<NSUInteger> RetainCountsOf(const Wrapped &objects)
{
    std::vector<NSUInteger> counts;
    for (const auto &[name, object] : objects)
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
        RandomValues random(host, seed, wrappers);
        const Value tree = random.Dictionary(kDepth);
        const Json model = InCocoa(ModelOf(host, tree));
        deepest = std::max(deepest, DepthOf(model));
        const std::vector<int64_t> references = ReferencesOf(host, random.Made());
        const std::vector<NSUInteger> retains = RetainCountsOf(wrapped);
        {
            const qzlhost::AutoreleasePool pool;
            Comparison comparison(wrapped);
            comparison.Compare(model, Convert(tree), "");
            EXPECT_THAT(comparison.Differences(), ::testing::IsEmpty());
        }
        EXPECT_EQ(ReferencesOf(host, random.Made()), references);
        EXPECT_EQ(RetainCountsOf(wrapped), retains);
        host.ClearTrace();
    }
    EXPECT_EQ(deepest, kDepth);
}

TEST_F(Trees, EntriesAfterANestedDictionaryAreAllThere)
{
    Host &host = Start();
    const Value inner = NewDictionary(host, {{"inner", 1}});
    const Value outer = NewDictionary(
        host,
        {{"first", inner}, {"second", 2}, {"third", inner}, {"fourth", host.NewDictionary()}, {"fifth", 5}});

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
    const Value inner = NewDictionary(host, {{"inner", 1}});
    const Value outer = NewDictionary(host, {{"first", inner}, {"second", 2}, {"third", 3}});
    host.ClearTrace();

    Convert(outer);

    EXPECT_EQ(LoadsOf(host, kDictionaryKeyGetter), 3) << "for the outer, the inner, and the outer again";
}

TEST_F(Trees, NestedDictionaryOfAnotherClassIsReadByItsOwnMethodsAndTheOuterByIts)
{
    Host &host = Start();
    host.DefineClass(
        {.name = "ProgramDictionary",
         .super = "Dictionary",
         .methods = {{kDictionaryKeyGetter, [](const Value &, const auto &) { return Value("own key"); }},
                     {kDictionaryGetter, [](const Value &, const auto &) { return Value("own value"); }}}});
    const Value inner = host.New("ProgramDictionary");
    host.DictionarySet(inner, "key", "value");
    const Value outer = NewDictionary(host, {{"first", inner}, {"second", 2}});

    NSDictionary *const converted = Convert(outer);

    NSDictionary *const expected = @{@"first" : @{@"own key" : @"own value"}, @"second" : @2};
    EXPECT_TRUE([converted isEqual:expected]) << Described(converted);
}

TEST_F(Trees, SameDictionaryTwiceIsConvertedTwice)
{
    Host &host = Start();
    const Value inner = NewDictionary(host, {{"key", "value"}});
    const Value array = host.NewArray(qzlhost::code::Object, {inner, inner});
    NSArray *const converted = Convert(array);
    EXPECT_TRUE([converted isEqual:(@[ @{@"key" : @"value"}, @{@"key" : @"value"} ])]);
    EXPECT_NE([converted objectAtIndex:0], [converted objectAtIndex:1]);
}

TEST_F(Trees, LaterOfTwoKeysThatAreEqualToCocoaWins)
{
    Host &host = Start();
    const Value dictionary = NewDictionary(host, {{true, "boolean"}, {1, "number"}});
    ASSERT_EQ(host.DictionaryCount(dictionary), 2);
    NSDictionary *const converted = Convert(dictionary);
    EXPECT_TRUE([converted isEqual:(@{@1 : @"number"})]) << Described(converted);
}

TEST_F(Trees, NilKeyIsSkippedAndKeyWithoutACocoaObjectIsNull)
{
    Host &host = StartWithWrappers();
    const Value dictionary = NewDictionary(host, {{Value(), "nil key"},
                                                  {host.New("ProgramObject"), "first"},
                                                  {host.New("ProgramObject"), "second"},
                                                  {"key", "third"}});
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
    const Value inner = NewDictionary(host, {{"shared", shared}, {"refused", refused}});
    const Value outer = NewDictionary(host, {{"before", shared}, {"inner", inner}, {"after", shared}});
    const std::vector<Value> values = {shared, refused, inner, outer};
    const std::vector<int64_t> references = ReferencesOf(host, values);

    EXPECT_TRUE([[ExceptionOf(outer) name] isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(ReferencesOf(host, values), references);
    host.ArraySet(refused, 1, "now convertible");
    EXPECT_EQ([Convert(outer) count], 3u);
    EXPECT_EQ([[Convert(outer) objectForKey:@"inner"] count], 2u);
}

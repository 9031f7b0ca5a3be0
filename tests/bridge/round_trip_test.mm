// Host values go to Cocoa and come back: the same, or changed by the rules of the conversions.
#import <Foundation/Foundation.h>

#include <cstring>
#include <numeric>
#include <random>
#include <set>

#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/wrappers.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/random_values.h"
#include "tests/support/value_model.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

Value Trip(const Value &value)
{
    const Value boxed = value.Boxed();
    const qzlhost::AutoreleasePool pool;
    return Owned(NewVariantFromNSObject(GetVariantAsNSObject(ObjectOf(boxed))));
}

/// Adds the types of the value and of everything in it.
void NoteTypes(const Json &model, std::set<std::string> &types)
{
    if (model.is_object())
        types.insert(model.begin().key());
    if (model.is_structured())
        for (const Json &part : model)
            NoteTypes(part, types);
}

class RoundTrip : public LinkedTest {
protected:
    /// In universal time, where every wall-clock time exists once.
    Host &StartInUniversalTime()
    {
        Host &host = Start();
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:0]];
        host.DefineClass({"ProgramObject", ""});
        return host;
    }
};

} // namespace

TEST_F(RoundTrip, RandomTreesComeBackAsTheRulesSay)
{
    constexpr uint64_t kTrees = 2000;
    Host &host = StartInUniversalTime();
    std::set<std::string> types;
    for (uint64_t seed = 1; seed <= kTrees; ++seed) {
        const Value before = RandomValues(host, seed).Any(5);
        const Json model = ModelOf(host, before);
        const Value after = Trip(before);
        ASSERT_EQ(Sorted(ModelOf(host, after)), AfterTrip(model)) << "seed " << seed;
        NoteTypes(model, types);
        host.ClearTrace();
    }
    for (const ValueType &type : kValueTypes)
        EXPECT_EQ(types.count(type.name), 1u) << "no tree had " << type.name << ": " << type.reason;
}

TEST_F(RoundTrip, SecondTripChangesNothingMore)
{
    constexpr uint64_t kTrees = 200;
    Host &host = StartInUniversalTime();
    for (uint64_t seed = 1001; seed <= 1000 + kTrees; ++seed) {
        const Value once = Trip(RandomValues(host, seed).Any(4));
        // A key without a Cocoa counterpart came back as Nil, which Cocoa has no key for.
        const Json model = Sorted(InCocoa(ModelOf(host, once)));
        const Value twice = Trip(once);
        ASSERT_EQ(Sorted(ModelOf(host, twice)), model) << "seed " << seed;
        host.ClearTrace();
    }
}

TEST_F(RoundTrip, DatesKeepTheirFieldsInAZoneWithSummerTime)
{
    Host &host = StartInUniversalTime();
    [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneWithName:@"Europe/Berlin"]];
    std::mt19937_64 random(7);
    const auto below = [&](int64_t end) {
        return static_cast<int64_t>(random() % static_cast<uint64_t>(end));
    };
    for (int count = 0; count < 500; ++count) {
        // Not in the hour that the clock skips, on a Sunday at 2.
        const Value date =
            host.NewDate(1950 + below(80), 1 + below(12), 1 + below(28), 4 + below(20), below(60), below(60));
        ASSERT_EQ(Trip(date).AsString(), date.AsString());
    }
}

TEST_F(RoundTrip, TrueAndOneAreOneKeyInCocoaAndTheLaterValueStays)
{
    Host &host = StartInUniversalTime();
    const Value after = Trip(NewDictionary(host, {{1, "number"}, {true, "boolean"}}));
    ASSERT_EQ(host.DictionaryCount(after), 1);
    EXPECT_EQ(host.DictionaryGet(after, host.DictionaryKey(after, 0)).AsString(), "boolean");
}

TEST_F(RoundTrip, EmptyStringsComeBackAsVariantsOfTheNullString)
{
    StartInUniversalTime();
    for (const Value &empty : {Value::EmptyString(), Value::StringOfBytes("", qzlhost::encoding::UTF8),
                               Value::StringOfBytes("", qzlhost::encoding::UTF16)}) {
        const Value after = Trip(empty);
        EXPECT_EQ(after.Code(), code::String);
        EXPECT_EQ(after.StringPointer(), nullptr);
    }
}

TEST_F(RoundTrip, StructuresKeepTheirNumbers)
{
    Host &host = StartInUniversalTime();
    for (const char *className : {"NSRectQZL", "NSSizeQZL", "NSPointQZL", "NSRangeQZL"}) {
        host.DefineClass({className, "", 4 * sizeof(double)});
        const Value before = host.New(className);
        const size_t size = className == std::string("NSRectQZL") ? 4 : 2;
        auto *const numbers = static_cast<double *>(host.InstanceData(before));
        std::iota(numbers, numbers + size, -1.25);

        const Value after = Trip(before);

        ASSERT_EQ(host.ClassOf(after), className);
        EXPECT_NE(after.ObjectPointer(), before.ObjectPointer());
        EXPECT_EQ(std::memcmp(host.InstanceData(after), host.InstanceData(before), 4 * sizeof(double)), 0);
    }
}

TEST_F(RoundTrip, WrapperInTheRegistryComesBackItself)
{
    Host &host = StartInUniversalTime();
    Registry registry;
    DefineWrapperClass(host, "NSTimerQZL");
    NSObject *const object = [[[NSObject alloc] init] autorelease];
    const Value wrapper = host.New("NSTimerQZL");
    AdoptHandle(ObjectOf(wrapper), [object retain]);

    const Value after = Trip(wrapper);

    EXPECT_EQ(after.ObjectPointer(), wrapper.ObjectPointer());
    EXPECT_EQ(host.References(wrapper), 2) << "the test's two";
}

// Nil, the type code of variants, and Dictionaries.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using VariantToObject = MemberConversion;

} // namespace

TEST_F(VariantToObject, NilIsNilAndTheHostIsNotAskedForItsType)
{
    Host &host = Start();
    host.ClearTrace();
    const NSNotification *const notification = NotificationOf({}, {});
    EXPECT_NE(notification, nil);
    EXPECT_EQ([notification object], nil);
    EXPECT_EQ([notification userInfo], nil);
    EXPECT_TRUE(host.Trace().empty());
}

TEST_F(VariantToObject, TypeCodeComesFromThePropertyWhereThereIsNoMethod)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("REALLoadGlobalMethod"); });
    EXPECT_TRUE([Convert("text") isEqual:@"text"]);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

TEST_F(VariantToObject, DictionaryHasEveryEntry)
{
    Host &host = Start();
    const Value dictionary = NewDictionary(host, {{"one", "1"}, {"two", "2"}, {"nothing", Value()}});
    NSDictionary *const converted = ConvertDictionary(dictionary);
    ASSERT_EQ([converted count], 3u);
    EXPECT_TRUE([[converted objectForKey:@"one"] isEqual:@"1"]);
    EXPECT_TRUE([[converted objectForKey:@"two"] isEqual:@"2"]);
    EXPECT_EQ([converted objectForKey:@"nothing"], [NSNull null]);
}

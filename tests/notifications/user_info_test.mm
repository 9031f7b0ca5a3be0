// The object and the user info of Cocoa's notifications, as a program reads them.
#import <Foundation/Foundation.h>

#include "tests/support/plugin_test.h"
#include "tests/support/value_model.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Posts through Cocoa, and returns the wrapper that reaches the program.
class UserInfo : public PluginTest {
protected:
    /// With the default time zone at Greenwich, so that dates have known fields.
    Host &StartWithObserver()
    {
        Host &host = Start();
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:0]];
        program_.emplace(host);
        program_->KeepNotifications();
        observer_ = program_->NewObserver();
        host.Call(DefaultCenter(host), "addObserver", {observer_, "Posted"});
        return host;
    }

    Value Post(id object, NSDictionary *userInfo)
    {
        [[NSNotificationCenter defaultCenter] postNotificationName:@"Posted" object:object userInfo:userInfo];
        if (program_->received.empty())
            return Value();
        const Value notification = program_->received.back().notification;
        program_->received.clear();
        return notification;
    }

    void TearDown() override
    {
        program_.reset();
        observer_ = Value();
        PluginTest::TearDown();
    }

private:
    std::optional<ObserverProgram> program_;
    Value observer_;
};

struct KindRow {
    const char *testName;
    id (*make)();
    /// The model of the value that the program reads.
    Json read;
};

/// Every kind of value of a property list, and nothing else.
const KindRow kKinds[] = {
    {"Text", []() -> id { return @"text"; }, typed::String("text")},
    {"EmptyText", []() -> id { return @""; }, typed::String("")},
    {"TextBeyondAscii", []() -> id { return @"\u00e9\u4e2d\U0001F600"; },
     typed::String("\u00e9\u4e2d\U0001F600")},
    {"Integer", []() -> id { return [NSNumber numberWithInt:-42]; }, typed::Integer(-42)},
    {"IntegerBeyondADouble", []() -> id { return [NSNumber numberWithLongLong:9007199254740993]; },
     typed::Integer(9007199254740993)},
    {"LowestInteger", []() -> id { return [NSNumber numberWithLongLong:INT64_MIN]; },
     typed::Integer(INT64_MIN)},
    {"Real", []() -> id { return [NSNumber numberWithDouble:0.1]; }, typed::Double(0.1)},
    {"True", []() -> id { return [NSNumber numberWithBool:YES]; }, typed::Boolean(true)},
    {"False", []() -> id { return [NSNumber numberWithBool:NO]; }, typed::Boolean(false)},
    {"Date", []() -> id { return [NSDate dateWithTimeIntervalSince1970:1709215509.75]; },
     typed::Date("2024-02-29 14:05:09")},
    {"Data", []() -> id { return [NSData dataWithBytes:"\0\xff\x01" length:3]; },
     typed::Memory({"\0\xff\x01", 3})},
    {"EmptyData", []() -> id { return [NSData data]; }, nullptr},
    {"Array", []() -> id { return @[ @"one", @2, @[ [NSData dataWithBytes:"data" length:4] ] ]; },
     typed::Array({typed::String("one"), typed::Integer(2), typed::Array({typed::Memory("data")})})},
    {"EmptyArray", []() -> id { return [NSArray array]; }, typed::Array({})},
    {"Dictionary", []() -> id { return @{@"in" : @{@"deeper" : @1}, @"after" : @"nested"}; },
     typed::Dictionary(
         {{"in", typed::Dictionary({{"deeper", typed::Integer(1)}})}, {"after", typed::String("nested")}})},
    {"EmptyDictionary", []() -> id { return [NSDictionary dictionary]; }, typed::Dictionary({})},
};

class UserInfoOfKind : public UserInfo, public ::testing::WithParamInterface<KindRow> {};

Json Read(Host &host, const Value &notification, const char *property)
{
    return Sorted(ModelOf(host, host.Get(notification, property)));
}

} // namespace

TEST_P(UserInfoOfKind, ObjectReadsAsItsValue)
{
    Host &host = StartWithObserver();
    const Value notification = Post(GetParam().make(), nil);
    ASSERT_FALSE(notification.IsNil());
    EXPECT_EQ(Read(host, notification, "objectVariant"), GetParam().read);
    EXPECT_TRUE(host.Get(notification, "userInfo").IsNil());
}

TEST_P(UserInfoOfKind, EntryReadsAsItsValue)
{
    Host &host = StartWithObserver();
    const Value notification = Post(nil, @{@"key" : GetParam().make()});
    ASSERT_FALSE(notification.IsNil());
    EXPECT_EQ(Read(host, notification, "userInfo"), typed::Dictionary({{"key", GetParam().read}}));
    EXPECT_TRUE(host.Get(notification, "objectVariant").IsNil());
}

INSTANTIATE_TEST_SUITE_P(Kinds, UserInfoOfKind, ::testing::ValuesIn(kKinds),
                         [](const ::testing::TestParamInfo<KindRow> &row) { return row.param.testName; });

TEST_F(UserInfo, HasEveryKindAtOnce)
{
    Host &host = StartWithObserver();
    NSMutableDictionary *const posted = [NSMutableDictionary dictionary];
    std::map<std::string, Json> expected;
    for (const KindRow &row : kKinds) {
        [posted setObject:row.make() forKey:[NSString stringWithUTF8String:row.testName]];
        expected[row.testName] = row.read;
    }

    const Value notification = Post(posted, posted);

    ASSERT_FALSE(notification.IsNil());
    for (const char *property : {"objectVariant", "userInfo"})
        EXPECT_EQ(Read(host, notification, property), typed::Dictionary(expected)) << property;
}

TEST_F(UserInfo, EmptyTextReadsAsTheNullString)
{
    Host &host = StartWithObserver();
    const Value notification = Post(@"", nil);
    ASSERT_FALSE(notification.IsNil());
    EXPECT_EQ(host.Get(notification, "objectVariant").StringPointer(), nullptr);
}

TEST_F(UserInfo, EachReadMakesADictionaryOfItsOwn)
{
    Host &host = StartWithObserver();
    const Value notification = Post(nil, @{@"key" : @"value"});
    const Value first = host.Get(notification, "userInfo");
    host.DictionarySet(first, "key", "changed by the program");
    EXPECT_EQ(host.DictionaryGet(host.Get(notification, "userInfo"), "key").AsString(), "value");
}

TEST_F(UserInfo, ReadsTheSameInsideTheEventAndAfterIt)
{
    Host &host = Start();
    std::string inside;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        inside = host.DictionaryGet(host.Get(notification, "userInfo"), "key").AsString();
    });
    program.KeepNotifications();
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Posted"});
    [[NSNotificationCenter defaultCenter] postNotificationName:@"Posted"
                                                        object:nil
                                                      userInfo:@{@"key" : @"value"}];
    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_EQ(inside, "value");
    const Value userInfo = host.Get(program.received[0].notification, "userInfo");
    EXPECT_EQ(host.DictionaryGet(userInfo, "key").AsString(), "value");
}

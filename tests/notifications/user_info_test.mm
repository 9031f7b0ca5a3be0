// The object and the user info of Cocoa's notifications, as a program reads them.
#import <Foundation/Foundation.h>

#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

/// Posts through Cocoa and gives the wrapper that reaches the program.
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
    void (*expect)(Host &host, const Value &value);
};

NSData *ThreeBytes()
{
    return [NSData dataWithBytes:"\0\xff\x01" length:3];
}

void ExpectThreeBytes(Host &host, const Value &value)
{
    ASSERT_EQ(value.Code(), code::Object);
    EXPECT_EQ(host.ClassOf(value), "MemoryBlock");
    EXPECT_EQ(host.MemoryBlockBytes(value), std::string("\0\xff\x01", 3));
}

void ExpectInteger(const Value &value, int64_t expected)
{
    EXPECT_EQ(value.Code(), code::Int64);
    EXPECT_EQ(value.AsInteger(), expected);
}

void ExpectText(const Value &value, const char *expected)
{
    EXPECT_EQ(value.Code(), code::String);
    EXPECT_EQ(value.AsString(), expected);
}

/// Every kind of value of a property list, and nothing else.
const KindRow kKinds[] = {
    {"Text", []() -> id { return @"text"; }, [](Host &, const Value &value) { ExpectText(value, "text"); }},
    {"EmptyText", []() -> id { return @""; },
     [](Host &, const Value &value) {
         ExpectText(value, "");
         EXPECT_EQ(value.StringPointer(), nullptr);
     }},
    {"TextBeyondAscii", []() -> id { return @"\u00e9\u4e2d\U0001F600"; },
     [](Host &, const Value &value) { ExpectText(value, "\u00e9\u4e2d\U0001F600"); }},
    {"Integer", []() -> id { return [NSNumber numberWithInt:-42]; },
     [](Host &, const Value &value) { ExpectInteger(value, -42); }},
    {"IntegerBeyondADouble", []() -> id { return [NSNumber numberWithLongLong:9007199254740993]; },
     [](Host &, const Value &value) { ExpectInteger(value, 9007199254740993); }},
    {"LowestInteger", []() -> id { return [NSNumber numberWithLongLong:INT64_MIN]; },
     [](Host &, const Value &value) { ExpectInteger(value, INT64_MIN); }},
    {"Real", []() -> id { return [NSNumber numberWithDouble:0.1]; },
     [](Host &, const Value &value) {
         EXPECT_EQ(value.Code(), code::Double);
         EXPECT_EQ(value.AsDouble(), 0.1);
     }},
    {"True", []() -> id { return [NSNumber numberWithBool:YES]; },
     [](Host &, const Value &value) {
         EXPECT_EQ(value.Code(), code::Boolean);
         EXPECT_TRUE(value.AsBoolean());
     }},
    {"False", []() -> id { return [NSNumber numberWithBool:NO]; },
     [](Host &, const Value &value) {
         EXPECT_EQ(value.Code(), code::Boolean);
         EXPECT_FALSE(value.AsBoolean());
     }},
    {"Date", []() -> id { return [NSDate dateWithTimeIntervalSince1970:1709215509.75]; },
     [](Host &, const Value &value) {
         EXPECT_EQ(value.Code(), code::Date);
         EXPECT_EQ(value.AsString(), "2024-02-29 14:05:09");
     }},
    {"Data", []() -> id { return ThreeBytes(); }, ExpectThreeBytes},
    {"EmptyData", []() -> id { return [NSData data]; },
     [](Host &, const Value &value) { EXPECT_TRUE(value.IsNil()); }},
    {"Array",
     []() -> id {
         return @[ @"one", @2, @[ ThreeBytes() ] ];
     },
     [](Host &host, const Value &value) {
         ASSERT_EQ(value.Code(), code::Array + code::Object);
         ASSERT_EQ(host.ArrayCount(value), 3);
         ExpectText(host.ArrayElement(value, 0), "one");
         ExpectInteger(host.ArrayElement(value, 1), 2);
         ExpectThreeBytes(host, host.ArrayElement(host.ArrayElement(value, 2), 0));
     }},
    {"EmptyArray", []() -> id { return [NSArray array]; },
     [](Host &host, const Value &value) {
         ASSERT_EQ(value.Code(), code::Array + code::Object);
         EXPECT_EQ(host.ArrayCount(value), 0);
     }},
    {"Dictionary", []() -> id { return @{@"in" : @{@"deeper" : @1}, @"after" : @"nested"}; },
     [](Host &host, const Value &value) {
         ASSERT_EQ(host.ClassOf(value), "Dictionary");
         ASSERT_EQ(host.DictionaryCount(value), 2);
         ExpectInteger(host.DictionaryGet(host.DictionaryGet(value, "in"), "deeper"), 1);
         ExpectText(host.DictionaryGet(value, "after"), "nested");
     }},
    {"EmptyDictionary", []() -> id { return [NSDictionary dictionary]; },
     [](Host &host, const Value &value) {
         ASSERT_EQ(host.ClassOf(value), "Dictionary");
         EXPECT_EQ(host.DictionaryCount(value), 0);
     }},
};

class UserInfoOfKind : public UserInfo, public ::testing::WithParamInterface<KindRow> {};

NSString *KeyOf(const KindRow &row)
{
    return [NSString stringWithUTF8String:row.testName];
}

} // namespace

TEST_P(UserInfoOfKind, ObjectReadsAsItsValue)
{
    Host &host = StartWithObserver();
    const Value notification = Post(GetParam().make(), nil);
    ASSERT_FALSE(notification.IsNil());
    GetParam().expect(host, host.Get(notification, "objectVariant"));
    EXPECT_TRUE(host.Get(notification, "userInfo").IsNil());
}

TEST_P(UserInfoOfKind, EntryReadsAsItsValue)
{
    Host &host = StartWithObserver();
    const Value notification = Post(nil, @{KeyOf(GetParam()) : GetParam().make()});
    ASSERT_FALSE(notification.IsNil());
    const Value userInfo = host.Get(notification, "userInfo");
    ASSERT_EQ(host.DictionaryCount(userInfo), 1);
    ExpectText(host.DictionaryKey(userInfo, 0), GetParam().testName);
    GetParam().expect(host, host.DictionaryGet(userInfo, GetParam().testName));
    EXPECT_TRUE(host.Get(notification, "objectVariant").IsNil());
}

INSTANTIATE_TEST_SUITE_P(Kinds, UserInfoOfKind, ::testing::ValuesIn(kKinds),
                         [](const ::testing::TestParamInfo<KindRow> &row) { return row.param.testName; });

TEST_F(UserInfo, HasEveryKindAtOnce)
{
    Host &host = StartWithObserver();
    NSMutableDictionary *const posted = [NSMutableDictionary dictionary];
    for (const KindRow &row : kKinds)
        [posted setObject:row.make() forKey:KeyOf(row)];

    const Value notification = Post(posted, posted);

    ASSERT_FALSE(notification.IsNil());
    for (const char *property : {"objectVariant", "userInfo"}) {
        const Value read = host.Get(notification, property);
        ASSERT_EQ(host.DictionaryCount(read), static_cast<int64_t>(std::size(kKinds)));
        for (const KindRow &row : kKinds) {
            SCOPED_TRACE(row.testName);
            row.expect(host, host.DictionaryGet(read, row.testName));
        }
    }
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

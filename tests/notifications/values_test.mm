// A program's values, as Cocoa observers of its notifications receive them.
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "tests/support/plugin_test.h"
#include "tests/support/recording_observer.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr char kName[] = "QZLValues";

class PostedValues : public PluginTest {
protected:
    Host &StartListening()
    {
        Host &started = Start();
        listener_ = [[QZLRecordingObserver alloc] init];
        [[NSNotificationCenter defaultCenter] addObserver:listener_
                                                 selector:@selector(receive:)
                                                     name:[NSString stringWithUTF8String:kName]
                                                   object:nil];
        return started;
    }

    void TearDown() override
    {
        [[NSNotificationCenter defaultCenter] removeObserver:listener_];
        [listener_ release];
        PluginTest::TearDown();
    }

    /// What the Cocoa observer gets when a program posts a notification with these arguments.
    NSNotification *Post(const std::vector<Value> &objectAndUserInfo)
    {
        std::vector<Value> arguments = {kName};
        arguments.insert(arguments.end(), objectAndUserInfo.begin(), objectAndUserInfo.end());
        [listener_->received removeAllObjects];
        host().Call(DefaultCenter(host()), "postNotificationName", arguments);
        EXPECT_EQ(Posts(), 1u);
        return [listener_->received lastObject];
    }

    id PostedObject(const Value &object) { return [Post({object}) object]; }

    id PostedUserInfo(const Value &value)
    {
        const Value info = host().NewDictionary();
        host().DictionarySet(info, "key", value);
        NSDictionary *const posted = [Post({"object", info}) userInfo];
        EXPECT_EQ([posted count], 1u);
        return [posted objectForKey:@"key"];
    }

    /// Posts the value as the object and in the user info. Both must arrive as equals of `expected`.
    void ExpectPosted(const Value &value, id expected)
    {
        for (const id posted : {PostedObject(value), PostedUserInfo(value)}) {
            ASSERT_NE(posted, nil);
            EXPECT_TRUE([posted isEqual:expected])
                << [[posted description] UTF8String] << " instead of " << [[expected description] UTF8String];
        }
    }

    size_t Posts() const { return [listener_->received count]; }

private:
    QZLRecordingObserver *listener_ = nil;
};

} // namespace

TEST_F(PostedValues, NotificationHasTheNameAndNothingElse)
{
    StartListening();
    NSNotification *const notification = Post({});
    EXPECT_STREQ([[notification name] UTF8String], kName);
    EXPECT_EQ([notification object], nil);
    EXPECT_EQ([notification userInfo], nil);
}

TEST_F(PostedValues, IntegersKeepAllBits)
{
    StartListening();
    for (const int64_t integer : {int64_t{0}, int64_t{-1}, INT64_MAX, INT64_MIN, (int64_t{1} << 53) + 1}) {
        ExpectPosted(Value(integer), [NSNumber numberWithLongLong:integer]);
        EXPECT_EQ([PostedObject(Value(integer)) longLongValue], integer);
    }
}

TEST_F(PostedValues, BooleansAndNumbersStayApart)
{
    StartListening();
    EXPECT_EQ(PostedUserInfo(true), [NSNumber numberWithBool:YES]);
    EXPECT_EQ(PostedUserInfo(false), [NSNumber numberWithBool:NO]);
    EXPECT_NE(PostedUserInfo(1), [NSNumber numberWithBool:YES]);
    EXPECT_STREQ([PostedUserInfo(1.5) objCType], @encode(double));
    EXPECT_STREQ([PostedUserInfo(1.5f) objCType], @encode(float));
}

TEST_F(PostedValues, StringsKeepEveryCharacter)
{
    StartListening();
    const std::string text("a\0\xC3\xA4\xF0\x9F\x98\x80", 8);
    const unichar units[] = {'a', 0, 0xE4, 0xD83D, 0xDE00};
    ExpectPosted(text, [NSString stringWithCharacters:units length:5]);
    ExpectPosted(Value::EmptyString(), @"");
    ExpectPosted(Value::TextOf("text"), @"text");
}

TEST_F(PostedValues, DateIsTheSameWallClockTime)
{
    Host &host = StartListening();
    ExpectPosted(host.NewDate(2024, 2, 29, 14, 5, 9),
                 [NSCalendarDate dateWithYear:2024
                                        month:2
                                          day:29
                                         hour:14
                                       minute:5
                                       second:9
                                     timeZone:[NSTimeZone localTimeZone]]);
}

TEST_F(PostedValues, ArraysKeepTheirOrder)
{
    Host &host = StartListening();
    ExpectPosted(host.NewArray(qzlhost::code::Int64, {3, 1, 2}), @[ @3, @1, @2 ]);
    ExpectPosted(host.NewArray(qzlhost::code::String, {"b", "", "a"}), @[ @"b", @"", @"a" ]);
    const Value inner = host.NewArray(qzlhost::code::Object, {"text", 7});
    ExpectPosted(host.NewArray(qzlhost::code::Object, {inner, inner}),
                 @[ @[ @"text", @7 ], @[ @"text", @7 ] ]);
}

TEST_F(PostedValues, DictionariesKeepWhatTheyNest)
{
    Host &host = StartListening();
    const Value inner = host.NewDictionary();
    host.DictionarySet(inner, "nothing", Value());
    host.DictionarySet(inner, 5, "five");
    const Value outer = host.NewDictionary();
    host.DictionarySet(outer, "inner", inner);
    host.DictionarySet(outer, "after", host.NewArray(qzlhost::code::Boolean, {true}));
    ExpectPosted(
        outer, @{
            @"inner" : @{@"nothing" : [NSNull null], @5 : @"five"},
            @"after" : @[ [NSNumber numberWithBool:YES] ],
        });
}

TEST_F(PostedValues, MemoryBlockIsACopyOfItsBytes)
{
    Host &host = StartListening();
    id posted = nil;
    {
        const Value block = host.NewMemoryBlock(std::string_view("a\0b", 3));
        posted = PostedUserInfo(block);
        EXPECT_EQ(host.References(block), 1);
    }
    EXPECT_TRUE([posted isEqual:[NSData dataWithBytes:"a\0b" length:3]]);
}

TEST_F(PostedValues, WrapperIsTheVeryObjectThatItWraps)
{
    Host &host = StartListening();
    const Value wrapper = host.New("NSNotificationQZL", {"Wrapped", "object"});
    NSNotification *const wrapped = HandleOf<NSNotification *>(host, wrapper);
    const NSUInteger retains = [wrapped retainCount];
    {
        const qzlhost::AutoreleasePool pool;
        EXPECT_EQ(PostedObject(wrapper), wrapped);
        EXPECT_EQ(PostedUserInfo(wrapper), wrapped);
        Post({});
    }
    EXPECT_EQ([wrapped retainCount], retains);
    EXPECT_EQ(host.References(wrapper), 1);
}

TEST_F(PostedValues, ArrayWithNilIsRefusedAndNothingIsPosted)
{
    Host &host = StartListening();
    Family family(host);
    family.OfferExceptions();
    const Value array = host.NewArray(qzlhost::code::Object, {"text", Value()});
    const Value center = DefaultCenter(host);

    const std::string raised =
        ExceptionClassOf([&] { host.Call(center, "postNotificationName", {kName, array}); });

    EXPECT_EQ(raised, "NSExceptionQZL");
    EXPECT_EQ(Posts(), 0u);
    EXPECT_EQ(host.References(array), 1);
}

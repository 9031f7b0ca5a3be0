// Containers that hold themselves, directly or through others, and deeply nested ones.
#import <Foundation/Foundation.h>

#include "tests/support/family_fixture.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

constexpr int kDepth = 2000;

class SelfContaining : public PluginWithFamily {
protected:
    /// A notification with the values as object and user info.
    Value NewNotification(const Value &object, const Value &info = Value())
    {
        return host().CallShared("NSNotificationQZL", "notificationWithName", {"name", object, info});
    }

    /// The value that a program reads for the Cocoa object.
    Value ToHost(id object)
    {
        NSNotification *const notification = [NSNotification notificationWithName:@"name" object:object];
        const Value wrapper = host().New("NSNotificationQZL", {reinterpret_cast<int64_t>(notification)});
        return host().Get(wrapper, "objectVariant");
    }
};

} // namespace

TEST_F(SelfContaining, DictionaryBecomesNullInsideItselfOnTheWayToCocoa)
{
    Host &host = StartWithFamily();
    const Value dictionary = NewDictionary(host, {{"before", 1}});
    host.DictionarySet(dictionary, "itself", dictionary);
    host.DictionarySet(dictionary, "after", 2);

    const Value made = NewNotification(Value(), dictionary);

    NSDictionary *const info = [HandleOf<NSNotification *>(host, made) userInfo];
    EXPECT_EQ([info count], 3u);
    EXPECT_EQ([info objectForKey:@"itself"], [NSNull null]);
    EXPECT_EQ([[info objectForKey:@"before"] intValue], 1);
    EXPECT_EQ([[info objectForKey:@"after"] intValue], 2);
    host.DictionarySet(dictionary, "itself", Value());
}

TEST_F(SelfContaining, DictionaryBecomesNullAsItsOwnKey)
{
    Host &host = StartWithFamily();
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, dictionary, "value");

    const Value made = NewNotification(dictionary);

    NSDictionary *const object = [HandleOf<NSNotification *>(host, made) object];
    EXPECT_EQ([object count], 1u);
    EXPECT_EQ([[object objectForKey:[NSNull null]] UTF8String], std::string("value"));
    host.Call(dictionary, "Clear");
}

TEST_F(SelfContaining, ArrayInsideItselfEndsInACocoaException)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    const Value array = host.NewArray(code::Object, {Value(1).Boxed(), Value()});
    host.ArraySet(array, 1, array);
    EXPECT_EQ(ExceptionClassOf([&] { NewNotification(array); }), "NSExceptionQZL");
    host.ArraySet(array, 1, Value());
}

TEST_F(SelfContaining, ArrayInADictionaryInItselfIsNullThere)
{
    Host &host = StartWithFamily();
    const Value array = host.NewArray(code::Object, {Value()});
    const Value dictionary = NewDictionary(host, {{"array", array}});
    host.ArraySet(array, 0, dictionary);

    const Value made = NewNotification(array);

    NSNotification *const notification = HandleOf<NSNotification *>(host, made);
    EXPECT_EQ([[[notification object] objectAtIndex:0] objectForKey:@"array"], [NSNull null]);
    host.ArraySet(array, 0, Value());
}

TEST_F(SelfContaining, DictionaryInAnArrayInItselfEndsInACocoaException)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    const Value array = host.NewArray(code::Object, {Value()});
    const Value dictionary = NewDictionary(host, {{"array", array}});
    host.ArraySet(array, 0, dictionary);
    EXPECT_EQ(ExceptionClassOf([&] { NewNotification(Value(), dictionary); }), "NSExceptionQZL");
    host.ArraySet(array, 0, Value());
}

TEST_F(SelfContaining, ContainerThatComesTwiceSideBySideIsConvertedTwiceOnTheWayToCocoa)
{
    Host &host = StartWithFamily();
    const Value inner = NewDictionary(host, {{"key", host.NewArray(code::String, {"element"})}});
    const Value array = host.NewArray(code::Object, {inner, inner});

    const Value made = NewNotification(array);

    NSArray *const object = [HandleOf<NSNotification *>(host, made) object];
    NSDictionary *const expected = [NSDictionary dictionaryWithObject:[NSArray arrayWithObject:@"element"]
                                                               forKey:@"key"];
    EXPECT_TRUE([[object objectAtIndex:0] isEqual:expected]);
    EXPECT_TRUE([[object objectAtIndex:1] isEqual:expected]);
}

TEST_F(SelfContaining, ArrayBecomesNilInsideItselfOnTheWayToTheHost)
{
    Host &host = StartWithFamily();
    NSMutableArray *const array = [NSMutableArray arrayWithObject:@"before"];
    const id itself = array;
    [array addObject:itself];
    [array addObject:@"after"];

    const Value variant = ToHost(array);

    ASSERT_EQ(host.ArrayCount(variant), 3);
    EXPECT_EQ(host.ArrayElement(variant, 0).AsString(), "before");
    EXPECT_TRUE(host.ArrayElement(variant, 1).IsNil());
    EXPECT_EQ(host.ArrayElement(variant, 2).AsString(), "after");
    [array removeAllObjects];
}

TEST_F(SelfContaining, DictionaryBecomesNilInsideItselfOnTheWayToTheHost)
{
    Host &host = StartWithFamily();
    NSMutableDictionary *const dictionary = [NSMutableDictionary dictionary];
    const id itself = dictionary;
    [dictionary setObject:itself forKey:@"itself"];
    [dictionary setObject:@"value" forKey:@"other"];

    const Value variant = ToHost(dictionary);

    ASSERT_EQ(host.DictionaryCount(variant), 2);
    EXPECT_EQ(host.DictionaryKey(variant, 0).AsString() + host.DictionaryKey(variant, 1).AsString(),
              [[[dictionary allKeys] componentsJoinedByString:@""] UTF8String]);
    EXPECT_TRUE(host.DictionaryGet(variant, "itself").IsNil());
    EXPECT_EQ(host.DictionaryGet(variant, "other").AsString(), "value");
    [dictionary removeAllObjects];
}

TEST_F(SelfContaining, SetInADictionaryInAnArrayInItselfIsNilThere)
{
    Host &host = StartWithFamily();
    NSMutableArray *const array = [NSMutableArray array];
    NSDictionary *const dictionary = [NSDictionary dictionaryWithObject:array forKey:@"array"];
    NSSet *const set = [NSSet setWithObject:dictionary];
    [array addObject:set];

    const Value variant = ToHost(set);

    const Value inSet = host.ArrayElement(variant, 0);
    const Value inDictionary = host.DictionaryGet(inSet, "array");
    ASSERT_EQ(host.ArrayCount(inDictionary), 1);
    EXPECT_TRUE(host.ArrayElement(inDictionary, 0).IsNil());
    [array removeAllObjects];
}

TEST_F(SelfContaining, ContainerThatComesTwiceSideBySideIsConvertedTwiceOnTheWayToTheHost)
{
    Host &host = StartWithFamily();
    NSDictionary *const inner = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    const Value variant = ToHost([NSArray arrayWithObjects:inner, inner, nil]);
    for (int64_t index = 0; index < 2; ++index)
        EXPECT_EQ(host.DictionaryGet(host.ArrayElement(variant, index), "key").AsString(), "value");
}

TEST_F(SelfContaining, TwoThousandLevelsAreConvertedBothWays)
{
    Host &host = StartWithFamily();
    Value nested = "core";
    for (int level = 0; level < kDepth; ++level)
        nested = level % 2 == 0 ? host.NewArray(code::Object, {nested.Boxed()})
                                : NewDictionary(host, {{"key", nested}});

    const Value made = NewNotification(nested);
    Value reached = host.Get(made, "objectVariant");

    for (int level = kDepth; level-- > 0;)
        reached = level % 2 == 0 ? host.ArrayElement(reached, 0) : host.DictionaryGet(reached, "key");
    EXPECT_EQ(reached.AsString(), "core");
}

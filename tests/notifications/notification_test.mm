// The notification class: its properties, its constructors, and its wrappers.
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using NotificationClass = PluginTest;

Value WithHandle(Host &host, NSNotification *notification)
{
    return host.New("NSNotificationQZL", {Value(reinterpret_cast<int64_t>(notification))});
}

/// What "Print" writes to the log.
std::vector<std::string> PrintedBy(Host &host, const Value &notification)
{
    const LogCapture log;
    host.Call(notification, "Print");
    return log.Lines();
}

/// What Foundation logs for the object and a new line.
std::vector<std::string> LoggedLine(id object)
{
    const LogCapture log;
    NSLog(@"%@\n", object);
    return log.Lines();
}

} // namespace

/// A notification whose name raises.
@interface QZLRaisingNotification : NSNotification
@end

@implementation QZLRaisingNotification
- (NSString *)name
{
    [NSException raise:@"Broken" format:@"no name"];
    return nil;
}
@end

TEST_F(NotificationClass, IsBuiltFromNameObjectAndUserInfo)
{
    Host &host = Start();
    const Value info = host.NewDictionary();
    host.DictionarySet(info, "first", "one");
    host.DictionarySet(info, "second", "two");
    const Value notification = host.New("NSNotificationQZL", {"Built", "the object", info});

    EXPECT_EQ(host.Get(notification, "Name").AsString(), "Built");
    EXPECT_EQ(host.Get(notification, "objectVariant").AsString(), "the object");
    const Value userInfo = host.Get(notification, "userInfo");
    ASSERT_EQ(host.DictionaryCount(userInfo), 2);
    EXPECT_EQ(host.DictionaryGet(userInfo, "first").AsString(), "one");
    EXPECT_EQ(host.DictionaryGet(userInfo, "second").AsString(), "two");
    NSNotification *const handle = HandleOf<NSNotification *>(host, notification);
    EXPECT_TRUE([[handle name] isEqualToString:@"Built"]);
    EXPECT_TRUE([[handle object] isEqualToString:@"the object"]);
    EXPECT_EQ([[handle userInfo] count], 2u);
    EXPECT_EQ(host.Get(notification, "objectHandle").AsInteger(), reinterpret_cast<int64_t>([handle object]));
}

TEST_F(NotificationClass, SharedMethodBuildsTheSame)
{
    Host &host = Start();
    const Value notification =
        host.CallShared("NSNotificationQZL", "notificationWithName", {"Shared", "object"});
    EXPECT_EQ(host.ClassOf(notification), "NSNotificationQZL");
    EXPECT_EQ(host.References(notification), 1);
    EXPECT_EQ(host.Get(notification, "Name").AsString(), "Shared");
    EXPECT_EQ(host.Get(notification, "objectVariant").AsString(), "object");
    EXPECT_TRUE(host.Get(notification, "userInfo").IsNil());
}

TEST_F(NotificationClass, WithoutObjectAndUserInfoReadsAsNothing)
{
    Host &host = Start();
    const Value notification = host.New("NSNotificationQZL", {"Plain"});
    EXPECT_EQ(host.Get(notification, "objectHandle").AsInteger(), 0);
    EXPECT_TRUE(host.Get(notification, "objectVariant").IsNil());
    EXPECT_TRUE(host.Get(notification, "userInfo").IsNil());
    EXPECT_FALSE(host.Get(notification, "Description").AsString().empty());
}

TEST_F(NotificationClass, DescriptionIsCocoas)
{
    Host &host = Start();
    const Value notification = host.New("NSNotificationQZL", {"Described"});
    EXPECT_EQ(host.Get(notification, "Description").AsString(),
              [[HandleOf<NSNotification *>(host, notification) description] UTF8String]);
}

TEST_F(NotificationClass, ReadingItTakesNoRetain)
{
    Host &host = Start();
    NSMutableString *const object = [NSMutableString stringWithString:@"object"];
    NSDictionary *const userInfo = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    NSNotification *const posted =
        [NSNotification notificationWithName:[NSMutableString stringWithString:@"a name of its own"]
                                      object:object
                                    userInfo:userInfo];
    const Value notification = WithHandle(host, posted);
    for (const id part : {(id)posted, (id)[posted name], (id)object, (id)userInfo}) {
        const NSUInteger retains = [part retainCount];
        for (const char *property :
             {"Handle", "userInfo", "Name", "Description", "objectHandle", "objectVariant"}) {
            {
                const qzlhost::AutoreleasePool pool;
                host.Get(notification, property);
            }
            EXPECT_EQ([part retainCount], retains) << property;
        }
    }
}

TEST_F(NotificationClass, InstanceWithoutHandleReadsEmptyWithoutError)
{
    Host &host = Start();
    const Value notification = host.NewWithoutConstructor("NSNotificationQZL");
    for (const char *property : {"Name", "Description"}) {
        const Value text = host.Get(notification, property);
        EXPECT_EQ(text.StringPointer(), nullptr) << property;
        EXPECT_EQ(text.AsString(), "") << property;
    }
    EXPECT_TRUE(host.Get(notification, "userInfo").IsNil());
    EXPECT_TRUE(host.Get(notification, "objectVariant").IsNil());
    EXPECT_EQ(host.Get(notification, "objectHandle").AsInteger(), 0);
}

TEST_F(NotificationClass, PrintWritesItAndANewLineToTheLog)
{
    Host &host = Start();
    const Value notification = host.New("NSNotificationQZL", {"PrintedName"});
    EXPECT_EQ(PrintedBy(host, notification), LoggedLine(HandleOf<NSNotification *>(host, notification)));
}

TEST_F(NotificationClass, PrintWithoutAHandleWritesNil)
{
    Host &host = Start();
    const Value notification = host.NewWithoutConstructor("NSNotificationQZL");
    EXPECT_EQ(PrintedBy(host, notification), LoggedLine(nil));
}

TEST_F(NotificationClass, WrapsAnExistingNotificationByItsAddress)
{
    Host &host = Start();
    NSNotification *const existing = [NSNotification notificationWithName:@"Existing" object:nil];
    const NSUInteger retains = [existing retainCount];
    {
        const Value notification = WithHandle(host, existing);
        EXPECT_EQ(HandleOf<NSNotification *>(host, notification), existing);
        EXPECT_EQ([existing retainCount], retains + 1);
        EXPECT_EQ(host.Get(notification, "Name").AsString(), "Existing");
    }
    EXPECT_EQ([existing retainCount], retains);
}

TEST_F(NotificationClass, WrapsWhateverObjectTheAddressIsOf)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    NSMutableString *const object = [NSMutableString stringWithString:@"no notification"];
    const NSUInteger retains = [object retainCount];
    {
        const Value wrapper = host.New("NSNotificationQZL", {Value(reinterpret_cast<int64_t>(object))});
        EXPECT_EQ(HandleOf<id>(host, wrapper), object);
        EXPECT_EQ([object retainCount], retains + 1);
        EXPECT_EQ(family.Registered(object), wrapper.ObjectPointer());
        EXPECT_EQ(host.Get(wrapper, "Description").AsString(), "no notification");
    }
    EXPECT_EQ([object retainCount], retains);
}

TEST_F(NotificationClass, ZeroHandleIsRefused)
{
    Host &host = Start();
    ExpectException([&] { host.New("NSNotificationQZL", {Value(int64_t{0})}); }, "NilObjectException",
                    "Handle is zero");
}

TEST_F(NotificationClass, EntersTheRegistryAndLeavesIt)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    {
        const Value built = host.New("NSNotificationQZL", {"Built"});
        EXPECT_EQ(family.Registered(HandleOf<NSNotification *>(host, built)), built.ObjectPointer());
        const Value made = host.CallShared("NSNotificationQZL", "notificationWithName", {"Made"});
        EXPECT_EQ(family.Registered(HandleOf<NSNotification *>(host, made)), made.ObjectPointer());
        const Value wrapped = WithHandle(host, [NSNotification notificationWithName:@"Wrapped" object:nil]);
        EXPECT_EQ(family.Registered(HandleOf<NSNotification *>(host, wrapped)), wrapped.ObjectPointer());
        EXPECT_EQ(family.RegistryCount(), 3);
    }
    EXPECT_EQ(family.RegistryCount(), 0);
}

TEST_F(NotificationClass, CocoaExceptionThatTheFamilyDoesNotWrapIsDropped)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    family.RefuseToWrap();
    NSNotification *const broken = NSAllocateObject([QZLRaisingNotification class], 0, nullptr);
    {
        const Value notification = WithHandle(host, broken);
        EXPECT_EQ(host.Get(notification, "Name").AsString(), "");
        EXPECT_EQ(family.ExceptionsWrapped(), 1);
    }
    NSDeallocateObject(broken);
}

TEST_F(NotificationClass, NullNameIsLeftToCocoaToRefuse)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    // GNUstep does not refuse it: the notification has no name.
    const Value notification = host.New("NSNotificationQZL", {Value::EmptyString()});
    ASSERT_NE(HandleOf<id>(host, notification), nil);
    EXPECT_EQ(host.Get(notification, "Name").StringPointer(), nullptr);
    EXPECT_EQ(family.ExceptionsWrapped(), 0);
}

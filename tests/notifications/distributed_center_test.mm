// The distributed centre, as far as one process can show it.
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "tests/support/plugin_test.h"
#include "tests/support/replaced_method.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using DistributedCenterClass = PluginTest;

constexpr char kClass[] = "NSDistributedNotificationCenterQZL";

/// The type that Cocoa was last asked for, and the centre that it returns.
std::string gType;
id gCenterForType;

id CenterForType(id, SEL, NSString *type)
{
    gType = type == nil ? "nil" : [type UTF8String];
    return gCenterForType;
}

} // namespace

TEST_F(DistributedCenterClass, HasItsConstants)
{
    Host &host = Start();
    EXPECT_EQ(host.Constant(kClass, "NSNotificationSuspensionBehaviorDrop"), 1);
    EXPECT_EQ(host.Constant(kClass, "NSNotificationSuspensionBehaviorCoalesce"), 2);
    EXPECT_EQ(host.Constant(kClass, "NSNotificationSuspensionBehaviorHold"), 3);
    EXPECT_EQ(host.Constant(kClass, "NSNotificationSuspensionBehaviorDeliverImmediately"), 4);
    EXPECT_EQ(host.Constant(kClass, "NSNotificationDeliverImmediately"), 1);
    EXPECT_EQ(host.Constant(kClass, "NSNotificationPostToAllSessions"), 2);
}

TEST_F(DistributedCenterClass, LocalTypeIsFoundations)
{
    Host &host = Start();
    EXPECT_EQ(host.CallShared(kClass, "NSLocalNotificationCenterType").AsString(),
              [NSLocalNotificationCenterType UTF8String]);
}

TEST_F(DistributedCenterClass, DefaultCenterIsOneInstanceWithARegistry)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    const Value first = host.CallShared(kClass, "defaultCenter");
    const Value second = host.CallShared(kClass, "defaultCenter");
    EXPECT_EQ(host.ClassOf(first), kClass);
    EXPECT_EQ(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(HandleOf<id>(host, first), [NSDistributedNotificationCenter defaultCenter]);
}

TEST_F(DistributedCenterClass, DefaultCenterIsANewInstanceWithoutARegistry)
{
    Host &host = Start();
    const Value first = host.CallShared(kClass, "defaultCenter");
    const Value second = host.CallShared(kClass, "defaultCenter");
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
}

TEST_F(DistributedCenterClass, ConstructorEntersNothingInTheRegistry)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    const Value constructed = host.New(kClass);
    EXPECT_EQ(family.RegistryCount(), 0);
    const Value given = host.CallShared(kClass, "defaultCenter");
    EXPECT_NE(given.ObjectPointer(), constructed.ObjectPointer());
    EXPECT_EQ(family.Registered(HandleOf<id>(host, given)), given.ObjectPointer());
}

TEST_F(DistributedCenterClass, CenterForTypeIsTheOneThatCocoaReturnsForTheName)
{
    Host &host = Start();
    const ReplacedMethod replaced(
        class_getClassMethod([NSDistributedNotificationCenter class], @selector(notificationCenterForType:)),
        &CenterForType);
    gCenterForType = [[[NSNotificationCenter alloc] init] autorelease];

    const Value center = host.CallShared(kClass, "notificationCenterForType", {"AType"});
    EXPECT_EQ(gType, "AType");
    EXPECT_EQ(host.ClassOf(center), kClass);
    EXPECT_EQ(HandleOf<id>(host, center), gCenterForType);

    host.CallShared(kClass, "notificationCenterForType", {Value::EmptyString()});
    EXPECT_EQ(gType, "nil");
    gCenterForType = nil;
    EXPECT_TRUE(host.CallShared(kClass, "notificationCenterForType", {"AType"}).IsNil());
}

TEST_F(DistributedCenterClass, DeliversToItsOwnProcess)
{
    Host &host = Start();
    std::vector<std::string> seen;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        seen.push_back(host.Get(notification, "objectVariant").AsString() + "/" +
                       host.DictionaryGet(host.Get(notification, "userInfo"), "key").AsString());
    });
    const Value observer = program.NewObserver();
    const Value center = host.New(kClass);
    host.Call(center, "addObserver", {observer, "QZLDistributedTest", Value(), Value(int64_t{4})});
    const Value info = host.NewDictionary();
    host.DictionarySet(info, "key", "value");
    host.Call(center, "postNotificationName", {"QZLDistributedTest", "object", info, true});
    host.Call(center, "postNotificationName", {"QZLDistributedTest", "object", info, uint32_t{3}});
    EXPECT_TRUE(host.RunUntil([&] { return program.received.size() == 2; }, 30));
    EXPECT_EQ(seen, (std::vector<std::string>{"object/value", "object/value"}));
}

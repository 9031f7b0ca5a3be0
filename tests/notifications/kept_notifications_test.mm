// Notifications that a program keeps, and those that several observers share.
#import <Foundation/Foundation.h>

#include <unistd.h>

#include <atomic>
#include <thread>

#include "family/family.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/plugin_test.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::Value;

/// A class whose objects no one else makes.
@interface PostedObject : NSObject
@end

@implementation PostedObject
@end

namespace {

using KeptNotification = PluginTest;
/// The parameter: whether the program keeps the notifications of its events.
class OneNotificationOfTwoObservers : public PluginTest, public ::testing::WithParamInterface<bool> {};

} // namespace

TEST_F(KeptNotification, IsReadAfterItsPosterItsObserverAndItsCentreAreGone)
{
    Host &host = Start();
    ObserverProgram program(host);
    program.KeepNotifications();
    {
        const Value observer = program.NewObserver();
        host.Call(host.New("NSNotificationCenterQZL"), "addObserver", {observer, "Kept"});
        std::atomic<bool> posted{false};
        std::thread poster([&] {
            const AutoreleasePool pool;
            NSMutableString *const object =
                [NSMutableString stringWithFormat:@"object of process %d", getpid()];
            NSDictionary *const userInfo =
                [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:getpid()] forKey:@"process"];
            [[NSNotificationCenter defaultCenter] postNotificationName:@"Kept"
                                                                object:object
                                                              userInfo:userInfo];
            posted = true;
        });
        EXPECT_TRUE(host.RunUntil([&] { return posted.load(); }, 30));
        poster.join();
    }

    ASSERT_EQ(program.received.size(), 1u);
    const Value notification = program.received[0].notification;
    EXPECT_EQ(host.Get(notification, "Name").AsString(), "Kept");
    EXPECT_EQ(host.Get(notification, "objectVariant").AsString(),
              "object of process " + std::to_string(getpid()));
    EXPECT_EQ(host.DictionaryGet(host.Get(notification, "userInfo"), "process").AsInteger(), getpid());
    program.received.clear();
}

TEST_F(KeptNotification, KeepsItsObjectAliveAndNothingLongerThanItself)
{
    Host &host = Start();
    ObserverProgram program(host);
    program.KeepNotifications();
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Kept"});
    {
        const AutoreleasePool pool;
        PostedObject *const object = [[PostedObject alloc] init];
        [[NSNotificationCenter defaultCenter] postNotificationName:@"Kept" object:object];
        [object release];
    }
    EXPECT_EQ(LiveCocoaObjects("PostedObject"), 1);
    {
        const AutoreleasePool pool;
        ASSERT_EQ(program.received.size(), 1u);
        const auto handle = host.Get(program.received[0].notification, "objectHandle").AsInteger();
        EXPECT_TRUE([reinterpret_cast<id>(handle) isKindOfClass:[PostedObject class]]);
        program.received.clear();
    }
    EXPECT_EQ(LiveCocoaObjects("PostedObject"), 0);
}

TEST_P(OneNotificationOfTwoObservers, HasOneWrapperForBothOnlyIfTheFirstKeepsIt)
{
    const bool keeps = GetParam();
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    ObserverProgram program(host);
    if (keeps)
        program.KeepNotifications();
    const Value observers[] = {program.NewObserver(), program.NewObserver()};
    const Value center = DefaultCenter(host);
    for (const Value &observer : observers)
        host.Call(center, "addObserver", {observer, "Shared"});
    host.ClearTrace();

    [[NSNotificationCenter defaultCenter] postNotificationName:@"Shared" object:nil];

    EXPECT_EQ(host.CallsOf("PluginNewInstance"), keeps ? 1 : 2);
    ASSERT_EQ(program.received.size(), 2u);
    if (keeps)
        EXPECT_EQ(host.References(program.received[0].notification), 2);
    program.received.clear();
}

INSTANTIATE_TEST_SUITE_P(Keeping, OneNotificationOfTwoObservers, ::testing::Bool());

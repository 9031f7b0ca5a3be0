// The disc-recording framework's centre.
#import <DiscRecording/DiscRecording.h>
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "platform/gnustep/DRNotificationCenterPosting.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using DiscRecordingCenterClass = PluginTest;

void Post(NSString *name)
{
    DRNotificationCenterPost([DRNotificationCenter currentRunLoopCenter],
                             [NSNotification notificationWithName:name object:nil]);
}

} // namespace

TEST_F(DiscRecordingCenterClass, BringsNotificationsToAnObserverUntilItIsRemoved)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const Value center = host.New("DRNotificationCenterQZL");
    host.Call(center, "addObserver", {observer, "BurnStatus"});
    Post(@"BurnStatus");
    Post(@"Other");
    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_EQ(program.received[0].name, "BurnStatus");
    host.Call(center, "removeObserver", {observer, "BurnStatus"});
    Post(@"BurnStatus");
    EXPECT_EQ(program.received.size(), 1u);
}

TEST_F(DiscRecordingCenterClass, MissingObserverIsCocoasToJudge)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    const Value center = host.New("DRNotificationCenterQZL");
    const Value bare = host.NewWithoutConstructor("NSNotificationObserverQZL");
    for (const Value &observer : {Value(), bare}) {
        // GNUstep refuses nil.
        EXPECT_EQ(ExceptionClassOf([&] {
                      host.Call(center, "addObserver", {observer, "Name"});
                  }),
                  "NSExceptionQZL");
    }
}

TEST_F(DiscRecordingCenterClass, EntersTheRegistryAndLeavesIt)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    {
        const Value center = host.New("DRNotificationCenterQZL");
        EXPECT_EQ(family.Registered([DRNotificationCenter currentRunLoopCenter]), center.ObjectPointer());
    }
    EXPECT_EQ(family.RegistryCount(), 0);
}

// Frameworks that the system lacks: their classes are nil to the library, which goes on without them.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <gmock/gmock.h>

#include "tests/notifications/member_names.h"
#include "tests/support/class_look_ups.h"
#include "tests/support/family_fixture.h"
#include "tests/support/recording_withdrawal.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;

namespace {

class MissingClass : public PluginWithFamily {
protected:
    Host &StartWithout(const char *className)
    {
        ClassLookUps::hidden = className;
        Host &host = StartWithFamily();
        family().OfferRegistry();
        family().OfferExceptions();
        return host;
    }

    /// The messages of an observer that is freed on a system without the class.
    std::vector<std::string> WithdrawalWithout(const char *className)
    {
        Host &host = StartWithout(className);
        RecordedMessages recorded;
        Value observer = host.New(kObserver);
        recorded.Label(HandleOf<id>(host, observer), "the observer");
        return MessagesToTheFourCenters(recorded, [&] { observer = Value(); });
    }

    void TearDown() override
    {
        EXPECT_EQ(family().ExceptionsWrapped(), 0);
        ClassLookUps::hidden = nullptr;
        PluginTest::TearDown();
    }
};

using MissingInstantMessage = MissingClass;
using MissingDiscRecording = MissingClass;
using MissingDistributedCenter = MissingClass;

} // namespace

TEST_F(MissingInstantMessage, LeavesAnObserverThreeCentresToWithdrawFrom)
{
    EXPECT_THAT(WithdrawalWithout("IMService"), ElementsAre("distributed removeObserver: the observer",
                                                            "default removeObserver: the observer",
                                                            "workspace removeObserver: the observer"));
}

TEST_F(MissingInstantMessage, KeepsNoNotificationFromAnObserver)
{
    Host &host = StartWithout("IMService");
    ObserverProgram program(host);
    const Value center = host.New(kCenter);
    {
        const Value observer = program.NewObserver();
        host.Call(center, "addObserver", {observer, "AName"});
        host.Call(center, "postNotificationName", {"AName"});
    }
    host.Call(center, "postNotificationName", {"AName"});
    EXPECT_EQ(program.received.size(), 1u);
}

TEST_F(MissingDiscRecording, LeavesItsCentreWithoutHandleAndEntryAndRaisesNothing)
{
    Host &host = StartWithout("DRNotificationCenter");
    const Value center = host.New(kDiscs);
    EXPECT_EQ(HandleOf<id>(host, center), nil);
    EXPECT_EQ(family().RegistryCount(), 0);
}

TEST_F(MissingDiscRecording, LetsItsCentresMembersEndWithoutAnException)
{
    Host &host = StartWithout("DRNotificationCenter");
    const Value center = host.New(kDiscs);
    const Value observer = host.New(kObserver);
    for (const char *member : {"addObserver", "removeObserver"})
        for (const Value &given : {observer, Value()})
            EXPECT_EQ(ExceptionClassOf([&] { host.Call(center, member, {given, "AName"}); }), "");
}

TEST_F(MissingDiscRecording, LetsTheConstructorBeCalledAgain)
{
    Host &host = StartWithout("DRNotificationCenter");
    const Value center = host.New(kDiscs);
    EXPECT_EQ(ExceptionClassOf([&] { host.Call(center, "Constructor"); }), "");
    EXPECT_EQ(HandleOf<id>(host, center), nil);
}

TEST_F(MissingDistributedCenter, IsNilToTheSharedMethodsAndNoHandleToTheConstructor)
{
    Host &host = StartWithout("NSDistributedNotificationCenter");
    host.ClearTrace();
    EXPECT_TRUE(host.CallShared(kDistributed, "defaultCenter").IsNil());
    EXPECT_TRUE(host.CallShared(kDistributed, "notificationCenterForType", {"AType"}).IsNil());
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
    const Value center = host.New(kDistributed);
    EXPECT_EQ(HandleOf<id>(host, center), nil);
    EXPECT_FALSE(host.Get(center, "suspended").AsBoolean());
}

TEST_F(MissingDistributedCenter, LeavesAnObserverThreeCentresToWithdrawFrom)
{
    EXPECT_THAT(WithdrawalWithout("NSDistributedNotificationCenter"),
                ElementsAre("default removeObserver: the observer", "service removeObserver: the observer",
                            "workspace removeObserver: the observer"));
}

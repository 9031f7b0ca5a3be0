// Frameworks that the system lacks: their classes are nil to the library, which goes on without them.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstring>

#include "tests/notifications/member_names.h"
#include "tests/notifications/recording_withdrawal.h"
#include "tests/support/family_fixture.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;

namespace {

/// The class that the system lacks; null for none.
const char *gMissing = nullptr;

Class LookUp(const char *function, const char *name)
{
    using Function = Class(const char *);
    if (gMissing != nullptr && std::strcmp(name, gMissing) == 0)
        return Nil;
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, function))(name);
}

} // namespace

// In place of the runtime's own: code for Linux asks the first whenever it uses a class, and the loader of
// dylibs asks the second when it binds a weak import.
extern "C" {

Class objc_lookup_class(const char *name)
{
    return LookUp("objc_lookup_class", name);
}

Class objc_getClass(const char *name)
{
    return LookUp("objc_getClass", name);
}
}

namespace {

class MissingClass : public PluginWithFamily {
protected:
    Host &StartWithout(const char *className)
    {
        gMissing = className;
        Host &host = StartWithFamily();
        family().OfferRegistry();
        family().OfferExceptions();
        return host;
    }

    void TearDown() override
    {
        EXPECT_EQ(family().ExceptionsWrapped(), 0);
        gMissing = nullptr;
        PluginTest::TearDown();
    }
};

using MissingInstantMessage = MissingClass;
using MissingDiscRecording = MissingClass;
using MissingDistributedCenter = MissingClass;

} // namespace

TEST_F(MissingInstantMessage, LeavesAnObserverThreeCentresToWithdrawFrom)
{
    Host &host = StartWithout("IMService");
    RecordedMessages recorded;
    Value observer = host.New(kObserver);
    recorded.Label(HandleOf<id>(host, observer), "the observer");

    const auto messages = MessagesToTheFourCenters(recorded, [&] { observer = Value(); });

    EXPECT_THAT(messages, ElementsAre("distributed removeObserver: the observer",
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

TEST_F(MissingDiscRecording, GivesItsCentreNoHandleAndNoEntryAndRaisesNothing)
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
    Host &host = StartWithout("NSDistributedNotificationCenter");
    RecordedMessages recorded;
    Value observer = host.New(kObserver);
    recorded.Label(HandleOf<id>(host, observer), "the observer");

    const auto messages = MessagesToTheFourCenters(recorded, [&] { observer = Value(); });

    EXPECT_THAT(messages,
                ElementsAre("default removeObserver: the observer", "service removeObserver: the observer",
                            "workspace removeObserver: the observer"));
}

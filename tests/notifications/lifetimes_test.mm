// Observers and centres that end before one another.
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <InstantMessage/IMService.h>

#include <unistd.h>

#include "tests/notifications/disc_recording.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// A name that no other process uses.
NSString *OwnName(NSString *name)
{
    return [NSString stringWithFormat:@"%@ %d", name, getpid()];
}

struct CenterRow {
    const char *testName;
    NSNotificationCenter *(*center)();
};

const CenterRow kCenters[] = {
    {"Distributed",
     []() -> NSNotificationCenter * { return [NSDistributedNotificationCenter defaultCenter]; }},
    {"Default", [] { return [NSNotificationCenter defaultCenter]; }},
    {"Service", [] { return [IMService notificationCenter]; }},
    {"Workspace", [] { return [[NSWorkspace sharedWorkspace] notificationCenter]; }},
};

class FreedObserver : public PluginTest, public ::testing::WithParamInterface<CenterRow> {};

/// The instances whose handlers the library asked for. It gets none.
std::vector<qzlhost::Instance *> gAskedFor;

void *NoEventInstance(qzlhost::Instance *instance, void *)
{
    gAskedFor.push_back(instance);
    return nullptr;
}

class ObserverAtTheDiscRecordingCentre : public PluginTest {
protected:
    Host &StartWithoutHandlers()
    {
        return Start({}, [](Host &unloaded) {
            unloaded.Replace("GetEventInstance", reinterpret_cast<void *>(NoEventInstance));
        });
    }
};

using FreedCenter = PluginTest;

} // namespace

TEST_P(FreedObserver, HearsNothingMoreFromTheCentre)
{
    Host &host = Start();
    NSNotificationCenter *const center = GetParam().center();
    NSString *const name = OwnName(@"Late");
    ObserverProgram freed(host, "FreedObserver");
    ObserverProgram witness(host, "WitnessObserver");
    const auto add = [&](const Value &observer) {
        [center addObserver:HandleOf<id>(host, observer)
                   selector:@selector(GotNotification:)
                       name:name
                     object:nil];
    };
    const auto postAndAwaitWitness = [&] {
        const size_t before = witness.received.size();
        [center postNotificationName:name object:nil];
        EXPECT_TRUE(host.RunUntil([&] { return witness.received.size() > before; }, 30));
    };
    const Value living[] = {witness.NewObserver(), witness.NewObserver()};
    {
        // Between the two others, so that one of them is called after it, in whichever order.
        const Value observer = freed.NewObserver();
        add(living[0]);
        add(observer);
        add(living[1]);
        postAndAwaitWitness();
        EXPECT_TRUE(host.RunUntil([&] { return witness.received.size() == 2; }, 30));
        ASSERT_EQ(freed.received.size(), 1u);
    }
    EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), 2);

    postAndAwaitWitness();
    EXPECT_TRUE(host.RunUntil([&] { return witness.received.size() == 4; }, 30));
    EXPECT_EQ(freed.received.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Centers, FreedObserver, ::testing::ValuesIn(kCenters),
                         [](const auto &parameter) { return std::string(parameter.param.testName); });

TEST_F(ObserverAtTheDiscRecordingCentre, IsNotWithdrawnWhenItIsFreed)
{
    Host &host = StartWithoutHandlers();
    const Value center = host.New("DRNotificationCenterQZL");
    id cocoaObserver = nil;
    const qzlhost::Instance *freed = nullptr;
    {
        const Value observer = host.New("NSNotificationObserverQZL");
        freed = observer.ObjectPointer();
        // Otherwise the centre would keep a dangling pointer.
        cocoaObserver = [HandleOf<id>(host, observer) retain];
        host.Call(center, "addObserver", {observer, "Left"});
    }

    PostToDiscRecording(@"Left");

    ASSERT_EQ(gAskedFor.size(), 1u);
    EXPECT_EQ(gAskedFor[0], freed);
    [[DRNotificationCenter currentRunLoopCenter] removeObserver:cocoaObserver name:@"Left" object:nil];
    [cocoaObserver release];
}

TEST_F(ObserverAtTheDiscRecordingCentre, IsWithdrawnByRemoveObserverBeforeItIsFreed)
{
    Host &host = StartWithoutHandlers();
    const Value center = host.New("DRNotificationCenterQZL");
    id cocoaObserver = nil;
    {
        const Value observer = host.New("NSNotificationObserverQZL");
        cocoaObserver = [HandleOf<id>(host, observer) retain];
        host.Call(center, "addObserver", {observer, "Left"});
        PostToDiscRecording(@"Left");
        EXPECT_EQ(gAskedFor.size(), 1u);
        host.Call(center, "removeObserver", {observer, "Left"});
    }

    PostToDiscRecording(@"Left");

    EXPECT_EQ(gAskedFor.size(), 1u);
    [cocoaObserver release];
}

TEST_F(FreedCenter, LeavesTheObserversOfTheProcessRegistered)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    for (const char *name : {"ByConstructor", "ByDefaultCenter"}) {
        const Value center =
            name == std::string("ByConstructor") ? host.New("NSNotificationCenterQZL") : DefaultCenter(host);
        host.Call(center, "addObserver", {observer, name});
    }
    host.Call(DefaultCenter(host), "postNotificationName", {"ByConstructor"});
    host.Call(DefaultCenter(host), "postNotificationName", {"ByDefaultCenter"});
    EXPECT_EQ(program.received.size(), 2u);

    host.Call(DefaultCenter(host), "removeObserver", {observer});
    host.Call(DefaultCenter(host), "postNotificationName", {"ByConstructor"});
    EXPECT_EQ(program.received.size(), 2u);
}

TEST_F(FreedCenter, LeavesTheObserversBetweenProcessesRegistered)
{
    Host &host = Start();
    ObserverProgram program(host);
    const std::string name = [OwnName(@"Between") UTF8String];
    const Value observer = program.NewObserver();
    host.Call(host.New("NSDistributedNotificationCenterQZL"), "addObserver", {observer, name, Value(), 4});
    host.Call(host.CallShared("NSDistributedNotificationCenterQZL", "defaultCenter"), "postNotificationName",
              {Value(name), Value("object"), Value(), Value(true)});
    EXPECT_TRUE(host.RunUntil([&] { return program.received.size() == 1; }, 30));
}

TEST_F(FreedCenter, LeavesTheObserversOfDiscRecordingRegistered)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    host.Call(host.New("DRNotificationCenterQZL"), "addObserver", {observer, "BurnStatus"});
    PostToDiscRecording(@"BurnStatus");
    EXPECT_EQ(program.received.size(), 1u);

    host.Call(host.New("DRNotificationCenterQZL"), "removeObserver", {observer, "BurnStatus"});
    PostToDiscRecording(@"BurnStatus");
    EXPECT_EQ(program.received.size(), 1u);
}

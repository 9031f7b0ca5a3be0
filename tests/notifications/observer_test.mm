// The observer: events on the main thread, its life, and what happens when things go wrong.
#import <Foundation/Foundation.h>

#include <atomic>
#include <thread>

#include "family/family.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/plugin_test.h"
#include "tests/support/replaced_method.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::HostOptions;
using qzlhost::Value;

namespace {

using ObserverBridge = PluginTest;

/// Posts through Cocoa, as a framework would.
void Post(NSString *name)
{
    [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil];
}

id (*gInit)(id, SEL);

/// Replaces -[NSObject init]: makes no observer.
id NoObserver(id self, SEL selector)
{
    if (![self isKindOfClass:objc_getClass("NSNotificationObserver")])
        return gInit(self, selector);
    [self release];
    return nil;
}

class ObserverOnHostVersion : public PluginTest,
                              public ::testing::WithParamInterface<std::optional<double>> {};

} // namespace

TEST_F(ObserverBridge, PostOnTheMainThreadIsDeliveredBeforeItReturns)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Delivered"});

    Post(@"Delivered");

    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_EQ(program.received[0].name, "Delivered");
    EXPECT_TRUE(program.received[0].onMainThread);
}

TEST_F(ObserverBridge, PostOnAnotherThreadWaitsForTheHandler)
{
    Host &host = Start();
    std::atomic<bool> handled{false};
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        handled = true;
    });
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "FromAThread"});

    std::atomic<bool> handledWhenPostReturned{false};
    std::atomic<bool> posted{false};
    std::thread poster([&] {
        const AutoreleasePool pool;
        Post(@"FromAThread");
        handledWhenPostReturned = handled.load();
        posted = true;
    });
    EXPECT_TRUE(host.RunUntil([&] { return posted.load(); }, 30));
    poster.join();

    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_TRUE(program.received[0].onMainThread);
    EXPECT_TRUE(handledWhenPostReturned);
}

TEST_F(ObserverBridge, WithoutAnEventHandlerMakesNoNotification)
{
    Host &host = Start();
    const Value observer = host.New("NSNotificationObserverQZL");
    host.Call(DefaultCenter(host), "addObserver", {observer, "Unheard"});
    host.ClearTrace();

    Post(@"Unheard");

    EXPECT_EQ(host.CallsOf("GetEventInstance"), 1);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 0);
}

TEST_P(ObserverOnHostVersion, FindsTheEventUnderTheHostsKey)
{
    HostOptions options;
    options.version = GetParam();
    Host &host = Start(options);
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Keyed"});
    Post(@"Keyed");
    EXPECT_EQ(program.received.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(AllVersions, ObserverOnHostVersion,
                         ::testing::Values(std::nullopt, 2011.04, 2012.0, 2013.0, 2013.03, 2013.04, 2026.0));

TEST_F(ObserverBridge, GivesTheWrapperBackAfterTheEvent)
{
    Host &host = Start();
    ObserverProgram program(host);
    program.KeepNotifications();
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Kept"});
    Post(@"Kept");
    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_EQ(host.ClassOf(program.received[0].notification), "NSNotificationQZL");
    EXPECT_EQ(host.References(program.received[0].notification), 1);
    program.received.clear();
}

TEST_F(ObserverBridge, TwoObserversOfOneNotificationGetTheirOwnWrappersWithoutARegistry)
{
    Host &host = Start();
    ObserverProgram program(host);
    program.KeepNotifications();
    const Value first = program.NewObserver();
    const Value second = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {first, "Apart"});
    host.Call(center, "addObserver", {second, "Apart"});

    Post(@"Apart");

    ASSERT_EQ(program.received.size(), 2u);
    EXPECT_NE(program.received[0].notification.ObjectPointer(),
              program.received[1].notification.ObjectPointer());
    program.received.clear();
}

TEST_F(ObserverBridge, WrapperThatNobodyKeepsLeavesTheRegistry)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    ObserverProgram program(host);
    {
        const Value observer = program.NewObserver();
        EXPECT_EQ(family.RegistryCount(), 1);
        EXPECT_EQ(family.Registered(HandleOf<id>(host, observer)), observer.ObjectPointer());
        const Value center = DefaultCenter(host);
        host.Call(center, "addObserver", {observer, "Brief"});
        Post(@"Brief");
        EXPECT_EQ(program.received.size(), 1u);
        EXPECT_EQ(family.RegistryCount(), 1);
    }
    EXPECT_EQ(family.RegistryCount(), 0);
}

TEST_F(ObserverBridge, CopyIsTheObserverItselfWithOneMoreRetain)
{
    Host &host = Start();
    const Value observer = host.New("NSNotificationObserverQZL");
    const id handle = HandleOf<id>(host, observer);
    const id copy = [handle copyWithZone:nullptr];
    EXPECT_EQ(copy, handle);
    EXPECT_EQ([handle retainCount], 2u);
    [copy release];
}

TEST_F(ObserverBridge, HandleIsAFieldThatTheProgramReadsAndWrites)
{
    Host &host = Start();
    const Value observer = host.New("NSNotificationObserverQZL");
    const id handle = HandleOf<id>(host, observer);
    EXPECT_EQ(host.Get(observer, "Handle").AsInteger(), reinterpret_cast<int64_t>(handle));

    host.Set(observer, "Handle", Value(int64_t{0}));
    EXPECT_EQ(HandleOf<id>(host, observer), nil);
    EXPECT_EQ([handle retainCount], 1u);
    host.Set(observer, "Handle", Value(reinterpret_cast<int64_t>(handle)));
    EXPECT_EQ([handle retainCount], 1u);
}

TEST_F(ObserverBridge, FreeingAnObserverReleasesItsCocoaObject)
{
    Host &host = Start();
    {
        const Value observer = host.New("NSNotificationObserverQZL");
        EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), 1);
    }
    EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), 0);
}

TEST_F(ObserverBridge, ConstructorWithoutACocoaObjectLeavesNoHandleAndNoEntry)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    const ReplacedMethod replaced(class_getInstanceMethod([NSObject class], @selector(init)), &NoObserver);
    gInit = replaced.Original();

    const Value observer = host.New("NSNotificationObserverQZL");

    EXPECT_EQ(HandleOf<id>(host, observer), nil);
    EXPECT_EQ(family.RegistryCount(), 0);
}

TEST_F(ObserverBridge, InstanceWithoutConstructorHasNoHandleAndGoesQuietly)
{
    Host &host = Start();
    const Value observer = host.NewWithoutConstructor("NSNotificationObserverQZL");
    EXPECT_EQ(HandleOf<id>(host, observer), nil);
    EXPECT_EQ(host.Get(observer, "Handle").AsInteger(), 0);
}

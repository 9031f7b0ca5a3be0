// The notification centre class: posting, observing, and the wrappers of centres.
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "tests/support/plugin_test.h"
#include "tests/support/replaced_method.h"

using qzlhost::Host;
using qzlhost::Value;

/// A centre class that the host may have a wrapper class for.
@interface QZLSpecialCenter : NSNotificationCenter
@end

@implementation QZLSpecialCenter
@end

namespace {

using CenterClass = PluginTest;

id gDefaultCenter;

id GivenDefaultCenter(id, SEL)
{
    return gDefaultCenter;
}

/// Makes +defaultCenter return this object while it lives.
class DefaultCenterMeanwhile {
public:
    explicit DefaultCenterMeanwhile(id center)
        : replaced_(class_getClassMethod([NSNotificationCenter class], @selector(defaultCenter)),
                    &GivenDefaultCenter)
    {
        gDefaultCenter = center;
    }

private:
    ReplacedMethod<id(id, SEL)> replaced_;
};

} // namespace

TEST_F(CenterClass, PostsByEachOverload)
{
    Host &host = Start();
    std::vector<std::string> seen;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        const Value userInfo = host.Get(notification, "userInfo");
        seen.push_back(host.Get(notification, "objectVariant").AsString() + "/" +
                       (userInfo.IsNil() ? "none" : host.DictionaryGet(userInfo, "key").AsString()));
    });
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {observer, "Posted"});
    const Value info = host.NewDictionary();
    host.DictionarySet(info, "key", "value");

    host.Call(center, "postNotificationName", {"Posted"});
    host.Call(center, "postNotificationName", {"Posted", "object"});
    host.Call(center, "postNotificationName", {"Posted", "object", info});
    host.Call(center, "postNotification", {host.New("NSNotificationQZL", {"Posted", "own", info})});

    EXPECT_EQ(seen, (std::vector<std::string>{"/none", "object/none", "object/value", "own/value"}));
}

TEST_F(CenterClass, NullNameObservesEveryNotification)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {observer});
    host.Call(center, "postNotificationName", {"One"});
    host.Call(center, "postNotificationName", {"Two"});
    host.Call(center, "removeObserver", {observer});
    ASSERT_EQ(program.received.size(), 2u);
    EXPECT_EQ(program.received[0].name, "One");
    EXPECT_EQ(program.received[1].name, "Two");
}

TEST_F(CenterClass, EmptyNameObservesOnlyTheEmptyName)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    const Value empty = Value::StringOfBytes("", qzlhost::encoding::UTF8);
    host.Call(center, "addObserver", {observer, empty});
    host.Call(center, "postNotificationName", {"Named"});
    EXPECT_TRUE(program.received.empty());
    host.Call(center, "postNotificationName", {empty});
    EXPECT_EQ(program.received.size(), 1u);
}

TEST_F(CenterClass, RemovalWithoutANameEndsEveryObservation)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    for (const char *name : {"A", "B"})
        host.Call(center, "addObserver", {observer, name});
    host.Call(center, "removeObserver", {observer});
    for (const char *name : {"A", "B"})
        host.Call(center, "postNotificationName", {name});
    EXPECT_TRUE(program.received.empty());
}

TEST_F(CenterClass, RemovingNoObserverRaisesNothing)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    const Value center = DefaultCenter(host);
    const std::vector<std::vector<Value>> calls = {{Value()}, {Value(), "Name"}};
    for (const std::vector<Value> &arguments : calls) {
        EXPECT_EQ(ExceptionClassOf([&] { host.Call(center, "removeObserver", arguments); }), "");
    }
}

TEST_F(CenterClass, PlainNewCenterIsTheDefaultCenter)
{
    Host &host = Start();
    NSNotificationCenter *const cocoa = [NSNotificationCenter defaultCenter];
    const NSUInteger retains = [cocoa retainCount];
    {
        const Value center = host.New("NSNotificationCenterQZL");
        EXPECT_EQ(HandleOf<NSNotificationCenter *>(host, center), cocoa);
        EXPECT_EQ([cocoa retainCount], retains + 1);
        EXPECT_EQ(host.Get(center, "Handle").AsInteger(), reinterpret_cast<int64_t>(cocoa));
    }
    EXPECT_EQ([cocoa retainCount], retains);
}

TEST_F(CenterClass, DefaultCenterReturnsANewInstanceEachTimeAndRegistersNone)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    const Value first = DefaultCenter(host);
    const Value second = DefaultCenter(host);
    EXPECT_EQ(host.ClassOf(first), "NSNotificationCenterQZL");
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(HandleOf<NSNotificationCenter *>(host, first), HandleOf<NSNotificationCenter *>(host, second));
    EXPECT_EQ(host.References(first), 1);
    EXPECT_EQ(family.RegistryCount(), 0);
}

TEST_F(CenterClass, DefaultCenterHasTheHostClassOfItsOwnClass)
{
    Host &host = Start();
    host.DefineClass({"QZLSpecialCenterQZL", "NSNotificationCenterQZL"});
    QZLSpecialCenter *const special = [[[QZLSpecialCenter alloc] init] autorelease];
    const DefaultCenterMeanwhile meanwhile(special);
    const Value center = DefaultCenter(host);
    EXPECT_EQ(host.ClassOf(center), "QZLSpecialCenterQZL");
    EXPECT_EQ(HandleOf<id>(host, center), special);
}

TEST_F(CenterClass, DefaultCenterIsNilForWhatIsNoCenter)
{
    Host &host = Start();
    host.DefineClass({"NSObjectQZL", "NSNotificationCenterQZL"});
    const DefaultCenterMeanwhile meanwhile([[[NSObject alloc] init] autorelease]);
    EXPECT_TRUE(DefaultCenter(host).IsNil());
    // The library does not give back an instance whose class does not fit.
    ExpectLeaks("NSObjectQZL", 1);
}

TEST_F(CenterClass, DestructorOfEitherWrapperRemovesTheCentersEntry)
{
    Host &host = Start();
    Family family(host);
    family.OfferRegistry();
    const Value constructed = host.New("NSNotificationCenterQZL");
    EXPECT_EQ(family.Registered([NSNotificationCenter defaultCenter]), constructed.ObjectPointer());
    {
        const Value other = DefaultCenter(host);
    }
    EXPECT_EQ(family.RegistryCount(), 0);
}

// The family's other libraries: each piece absent, present, or loaded after this library.
#import <Foundation/Foundation.h>

#include <set>

#include "tests/notifications/member_calls.h"
#include "tests/notifications/member_names.h"
#include "tests/support/family_fixture.h"
#include "tests/support/raising.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

struct BridgeMember {
    const char *testName;
    const char *className;
    const char *member;
};

/// Every member that makes or destroys instances, and so looks for the family's other libraries.
const BridgeMember kBridgeMembers[] = {
    {"ObserverBegins", kObserver, kBegin},
    {"ObserverEnds", kObserver, kEnd},
    {"ObserverConstructor", kObserver, "Constructor"},
    {"NotificationBegins", kNotification, kBegin},
    {"NotificationEnds", kNotification, kEnd},
    {"ConstructorWithHandle", kNotification, "Constructor(handle as integer)"},
    {"ConstructorByName", kNotification, kBuild},
    {"CenterBegins", kCenter, kBegin},
    {"CenterEnds", kCenter, kEnd},
    {"CenterConstructor", kCenter, "Constructor"},
    {"DefaultCenter", kCenter, "defaultCenter as NSNotificationCenterQZL"},
    {"DistributedConstructor", kDistributed, "Constructor"},
    {"LocalType", kDistributed, "NSLocalNotificationCenterType as string"},
    {"DistributedDefaultCenter", kDistributed, "defaultCenter as NSDistributedNotificationCenterQZL"},
    {"CenterForType", kDistributed, kForType},
    {"DiscsBegin", kDiscs, kBegin},
    {"DiscsEnd", kDiscs, kEnd},
    {"DiscsConstructor", kDiscs, "Constructor"},
};

std::string KeyOf(const BridgeMember &row)
{
    return std::string(row.className) + ": " + row.member;
}

class FamilyTest : public PluginWithFamily {
protected:
    /// Makes Cocoa raise. Returns the class of the host exception; empty for none.
    std::string ExceptionOfCocoa()
    {
        const Value center = DefaultCenter(host());
        return ExceptionClassOf([&] { host().Call(center, "postNotification", {Value()}); });
    }
};

class FamilyAtMember : public FamilyTest, public ::testing::WithParamInterface<BridgeMember> {
protected:
    /// Calls the member on `self`, while the host makes no further instances.
    void CallAlone(const Value &self)
    {
        const MemberFunction member = FindMember(host(), KeyOf(GetParam()));
        host().Fail("PluginNewInstance");
        EXPECT_FALSE(CallMember(member, self, member.PlainArguments()).threw);
        host().Fail("PluginNewInstance", false);
    }

    Value NewInstance() { return host().NewWithoutConstructor(GetParam().className); }

    /// A second Constructor would be refused: an instance for each call.
    std::vector<Value> NewInstances() { return {NewInstance(), NewInstance(), NewInstance(), NewInstance()}; }
};

/// For every class with a destructor hook of its own.
class EndOfInstance : public PluginWithFamily, public ::testing::WithParamInterface<const char *> {
protected:
    static std::vector<Value> ArgumentsFor(const std::string &className)
    {
        return className == kNotification ? std::vector<Value>{"AName"} : std::vector<Value>{};
    }

    static std::string HookOf(const std::string &className) { return className + ": " + kEnd; }
};

std::string NameOf(const ::testing::TestParamInfo<BridgeMember> &info)
{
    return info.param.testName;
}

std::ostream &operator<<(std::ostream &stream, const BridgeMember &row)
{
    return stream << KeyOf(row);
}

} // namespace

// The registry and the preparation

TEST_P(FamilyAtMember, AsksForTheRegistryUntilItIsKnown)
{
    Host &host = StartWithFamily();
    const std::vector<Value> instances = NewInstances();
    CallAlone(instances[0]);
    family().WithholdRegistry();
    family().OfferRegistry();
    CallAlone(instances[1]);
    EXPECT_EQ(family().RegistryAsks(), 1);
    family().WithholdRegistry(false);
    CallAlone(instances[2]);
    EXPECT_EQ(family().RegistryAsks(), 2) << "null is no registry yet";
    CallAlone(instances[3]);
    EXPECT_EQ(family().RegistryAsks(), 2);

    const Value notification = host.New(kNotification, {"AName"});
    EXPECT_EQ(family().RegistryAsks(), 2);
    EXPECT_EQ(family().Registered(HandleOf<id>(host, notification)), notification.ObjectPointer());
}

TEST_P(FamilyAtMember, RunsThePreparationThatAppearsExactlyOnce)
{
    Host &host = StartWithFamily();
    const std::vector<Value> instances = NewInstances();
    CallAlone(instances[0]);
    family().OfferPreparation();
    CallAlone(instances[1]);
    EXPECT_EQ(family().Preparations(), 1);
    CallAlone(instances[2]);
    EXPECT_EQ(family().Preparations(), 1);

    for (const char *className : {kNotification, kCenter, kObserver})
        host.NewWithoutConstructor(className);
    EXPECT_EQ(family().Preparations(), 1);
}

INSTANTIATE_TEST_SUITE_P(Members, FamilyAtMember, ::testing::ValuesIn(kBridgeMembers), NameOf);

TEST_F(FamilyTest, NoOtherMemberAsksTheFamily)
{
    Host &host = StartWithFamily();
    std::set<std::string> bridge;
    for (const BridgeMember &row : kBridgeMembers)
        bridge.insert(KeyOf(row));
    // Making an instance asks the family, so all of them are made before there is one.
    std::vector<std::pair<MemberFunction, Value>> others;
    for (const MemberFunction &member : MemberFunctions(host))
        if (bridge.count(member.Key()) == 0)
            others.emplace_back(member, host.NewWithoutConstructor(member.className.c_str()));
    ASSERT_EQ(others.size() + bridge.size(), MemberFunctions(host).size());
    family().WithholdRegistry();
    family().OfferRegistry();
    family().OfferPreparation();
    host.Fail("PluginNewInstance");

    for (const auto &[member, instance] : others) {
        SCOPED_TRACE(member.Key());
        EXPECT_FALSE(CallMember(member, instance, member.PlainArguments()).threw);
        EXPECT_EQ(family().RegistryAsks(), 0);
        EXPECT_EQ(family().Preparations(), 0);
    }
    host.Fail("PluginNewInstance", false);
}

TEST_F(FamilyTest, PreparationThatRaisesIsAskedForAgain)
{
    Host &host = StartWithFamily();
    family().Raise(FamilyMethod::Preparation);
    family().OfferPreparation();
    {
        const Value first = host.NewWithoutConstructor(kNotification);
        EXPECT_EQ(family().Preparations(), 1);
        family().Raise(FamilyMethod::Preparation, false);
        const Value second = host.NewWithoutConstructor(kNotification);
        EXPECT_EQ(family().Preparations(), 2);
    }
    EXPECT_EQ(family().Preparations(), 2);
}

TEST_F(FamilyTest, RegistryWorksWithoutThePreparation)
{
    Host &host = StartWithFamily();
    family().OfferRegistry();
    const Value notification = host.New(kNotification, {"AName"});
    EXPECT_EQ(family().RegistryCount(), 1);
    EXPECT_EQ(family().Preparations(), 0);
}

TEST_F(FamilyTest, WrapperMadeBeforeTheRegistryIsNeverEntered)
{
    Host &host = StartWithFamily();
    {
        const Value before = host.New(kNotification, {"Before"});
        family().OfferRegistry();
        const Value after = host.New(kNotification, {"After"});
        EXPECT_EQ(family().Registered(HandleOf<id>(host, before)), nullptr);
        EXPECT_EQ(family().Registered(HandleOf<id>(host, after)), after.ObjectPointer());
    }
    EXPECT_EQ(family().RegistryCount(), 0);
}

// The end of an instance

TEST_P(EndOfInstance, ForgetsReleasesAndClearsTheHandle)
{
    Host &host = StartWithFamily();
    family().OfferRegistry();
    const Value instance = host.New(GetParam(), ArgumentsFor(GetParam()));
    const id handle = [HandleOf<id>(host, instance) retain];
    const NSUInteger retains = [handle retainCount];
    const MemberFunction end = FindMember(host, HookOf(GetParam()));

    EXPECT_FALSE(CallMember(end, instance, {}).threw);

    EXPECT_EQ(family().Registered(handle), nullptr);
    EXPECT_EQ([handle retainCount], retains - 1);
    EXPECT_EQ(HandleOf<id>(host, instance), nil);
    [handle release];
}

TEST_P(EndOfInstance, ForgetsTheHandleBeforeItReleasesIt)
{
    Host &host = StartWithFamily();
    family().OfferRegistry();
    const Value instance = host.New(GetParam(), ArgumentsFor(GetParam()));
    const id handle = HandleOf<id>(host, instance);
    ASSERT_EQ(family().Registered(handle), instance.ObjectPointer());
    const MemberFunction end = FindMember(host, HookOf(GetParam()));
    {
        const RaisingMeanwhile raising(handle);
        EXPECT_FALSE(CallMember(end, instance, {}).threw);
    }
    EXPECT_EQ(family().Registered(handle), nullptr);
    EXPECT_EQ(HandleOf<id>(host, instance), handle);
}

INSTANTIATE_TEST_SUITE_P(Classes, EndOfInstance, ::testing::Values(kObserver, kNotification, kCenter, kDiscs),
                         [](const auto &parameter) { return std::string(parameter.param); });

// Cocoa exceptions

TEST_F(FamilyTest, ExceptionsReachTheProgramOnceTheFamilyIsThere)
{
    StartWithFamily();
    EXPECT_EQ(ExceptionOfCocoa(), "");
    family().OfferExceptions();
    EXPECT_EQ(ExceptionOfCocoa(), "NSExceptionQZL");
    EXPECT_EQ(family().ExceptionsWrapped(), 1);
}

TEST_F(FamilyTest, ExceptionClassWithoutTheMethodWrapsNothing)
{
    StartWithFamily();
    family().OfferExceptionClass();
    EXPECT_EQ(ExceptionOfCocoa(), "");
    family().Offer(FamilyMethod::Wrapping);
    EXPECT_EQ(ExceptionOfCocoa(), "NSExceptionQZL");
}

TEST_F(FamilyTest, MethodWithoutTheExceptionClassWrapsNothing)
{
    StartWithFamily();
    family().Offer(FamilyMethod::Wrapping);
    EXPECT_EQ(ExceptionOfCocoa(), "");
    EXPECT_EQ(family().ExceptionsWrapped(), 1);
    family().OfferExceptionClass();
    EXPECT_EQ(ExceptionOfCocoa(), "NSExceptionQZL");
}

TEST_F(FamilyTest, MethodThatRaisesWhileItWrapsIsAsGoodAsNone)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    family().Raise(FamilyMethod::Wrapping);
    EXPECT_EQ(ExceptionOfCocoa(), "");
    EXPECT_EQ(family().ExceptionsWrapped(), 1);
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 0);
}

TEST_F(FamilyTest, ExceptionPropertyIsNilWithOrWithoutTheFamily)
{
    Host &host = StartWithFamily();
    const Value notification = host.New(kNotification, {"AName"});
    EXPECT_TRUE(host.Get(notification, "_exception").IsNil());
    family().OfferExceptions();
    EXPECT_TRUE(host.Get(notification, "_exception").IsNil());
}

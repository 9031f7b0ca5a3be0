// "Constructor" called a second time, on everything that has one.
#import <Foundation/Foundation.h>

#include "family/family.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The argument of a notification's constructor; the other classes' constructors have none.
enum class By { Nothing, Name, Handle, ZeroHandle };

struct SecondConstructor {
    const char *testName;
    const char *className;
    By first;
    By second;
    /// Whether the constructor looks for the family's libraries before it refuses.
    bool asksTheFamily;
};

constexpr SecondConstructor kRefused[] = {
    {"Observer", "NSNotificationObserverQZL", By::Nothing, By::Nothing, false},
    {"NotificationByNameThenName", "NSNotificationQZL", By::Name, By::Name, true},
    {"NotificationByNameThenHandle", "NSNotificationQZL", By::Name, By::Handle, true},
    {"NotificationByNameThenZeroHandle", "NSNotificationQZL", By::Name, By::ZeroHandle, true},
    {"NotificationByHandleThenName", "NSNotificationQZL", By::Handle, By::Name, true},
    {"NotificationByHandleThenHandle", "NSNotificationQZL", By::Handle, By::Handle, true},
    {"Center", "NSNotificationCenterQZL", By::Nothing, By::Nothing, true},
    {"DiscRecordingCenter", "DRNotificationCenterQZL", By::Nothing, By::Nothing, false},
};

/// `object` is the notification that a handle is the address of.
std::vector<Value> Arguments(By by, id object)
{
    switch (by) {
    case By::Nothing:
        return {};
    case By::Name:
        return {Value("Name")};
    case By::Handle:
        return {Value(reinterpret_cast<int64_t>(object))};
    case By::ZeroHandle:
        return {Value(int64_t{0})};
    }
    return {};
}

class RefusedConstructor : public PluginTest, public ::testing::WithParamInterface<SecondConstructor> {};

using SecondConstructorOfInstance = PluginTest;

constexpr const char *kMessage = "Constructor called too often. Object is already initialized.";

} // namespace

TEST_P(RefusedConstructor, RaisesAndLeavesTheFirstObjectAsItWas)
{
    Host &host = Start();
    const SecondConstructor &row = GetParam();
    NSNotification *const firstObject = [NSNotification notificationWithName:@"First" object:nil];
    NSNotification *const secondObject = [NSNotification notificationWithName:@"Second" object:nil];
    const Value instance = host.New(row.className, Arguments(row.first, firstObject));
    const id handle = HandleOf<id>(host, instance);
    ASSERT_NE(handle, nil);
    const NSUInteger retains = [handle retainCount];
    const NSUInteger secondRetains = [secondObject retainCount];
    host.ClearTrace();

    ExpectException([&] { host.Call(instance, "Constructor", Arguments(row.second, secondObject)); },
                    "UnsupportedOperationException", kMessage);

    EXPECT_EQ(HandleOf<id>(host, instance), handle);
    EXPECT_EQ([handle retainCount], retains);
    EXPECT_EQ([secondObject retainCount], secondRetains);
    EXPECT_EQ(host.CallsOf("REALGetStringEncoding"), 0) << "the name was converted all the same";
}

TEST_P(RefusedConstructor, LooksForTheFamilyOnlyWhereItDoesSoFirst)
{
    Host &host = Start();
    const SecondConstructor &row = GetParam();
    const id object = [NSNotification notificationWithName:@"Any" object:nil];
    const Value instance = host.New(row.className, Arguments(row.first, object));
    Family family(host);
    family.OfferPreparation();

    ExceptionClassOf([&] { host.Call(instance, "Constructor", Arguments(row.second, object)); });

    EXPECT_EQ(family.Preparations(), row.asksTheFamily ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Classes, RefusedConstructor, ::testing::ValuesIn(kRefused),
                         [](const auto &parameter) { return std::string(parameter.param.testName); });

TEST_F(SecondConstructorOfInstance, IsRefusedToANotificationOfAnEvent)
{
    Host &host = Start();
    std::string raised;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        raised = ExceptionClassOf([&] { host.Call(notification, "Constructor", {"Other"}); });
    });
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {observer, "Event"});
    host.Call(center, "postNotificationName", {"Event"});
    EXPECT_EQ(raised, "UnsupportedOperationException");
}

TEST_F(SecondConstructorOfInstance, IsRefusedToWhatASharedMethodMade)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    ExpectException([&] { host.Call(center, "Constructor"); }, "UnsupportedOperationException", kMessage);
    EXPECT_EQ(HandleOf<id>(host, center), [NSNotificationCenter defaultCenter]);
    const Value notification = host.CallShared("NSNotificationQZL", "notificationWithName", {"Given"});
    ExpectException([&] { host.Call(notification, "Constructor", {"Again"}); },
                    "UnsupportedOperationException", kMessage);
}

TEST_F(SecondConstructorOfInstance, SucceedsForACentreBetweenProcessesAndKeepsTheFirstRetain)
{
    Host &host = Start();
    const id center = [NSDistributedNotificationCenter defaultCenter];
    const NSUInteger retains = [center retainCount];
    {
        const Value instance = host.New("NSDistributedNotificationCenterQZL");
        host.Call(instance, "Constructor");
        host.Call(instance, "Constructor");
        EXPECT_EQ(HandleOf<id>(host, instance), center);
        EXPECT_EQ([center retainCount], retains + 3);
    }
    // The instance gives one back, the last.
    EXPECT_EQ([center retainCount], retains + 2);
}

// The centres from which an observer withdraws itself at its end, in their order.
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <InstantMessage/IMService.h>
#include <objc/runtime.h>

#include <gmock/gmock.h>

#include "tests/notifications/member_names.h"
#include "tests/notifications/recording_center.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Getter = id (*)(id, SEL);

QZLRecordingCenter *gDistributed;
QZLRecordingCenter *gDefault;
QZLRecordingCenter *gService;
QZLRecordingCenter *gWorkspace;

id Distributed(id, SEL)
{
    return gDistributed;
}

id Default(id, SEL)
{
    return gDefault;
}

id Service(id, SEL)
{
    return gService;
}

id Workspace(id, SEL)
{
    return gWorkspace;
}

/// A method that is another while this lives.
class SwappedMethod {
public:
    SwappedMethod(Method method, Getter replacement)
        : method_(method), original_(method_setImplementation(method, reinterpret_cast<IMP>(replacement)))
    {
    }
    ~SwappedMethod() { method_setImplementation(method_, original_); }
    SwappedMethod(const SwappedMethod &) = delete;
    SwappedMethod &operator=(const SwappedMethod &) = delete;

private:
    Method method_;
    IMP original_;
};

/// With centres that record in the places of the four.
class Withdrawal : public PluginTest {
protected:
    void SetUp() override
    {
        gDistributed = recorded_.NewCenter("distributed");
        gDefault = recorded_.NewCenter("default");
        gService = recorded_.NewCenter("service");
        gWorkspace = recorded_.NewCenter("workspace");
    }

    /// What the centres get while `body` runs.
    std::vector<std::string> MessagesDuring(const std::function<void()> &body)
    {
        // Made before, since it asks for centres of its own.
        NSWorkspace *const workspace = [NSWorkspace sharedWorkspace];
        const SwappedMethod distributed(
            class_getClassMethod([NSDistributedNotificationCenter class], @selector(defaultCenter)),
            Distributed);
        const SwappedMethod processes(
            class_getClassMethod([NSNotificationCenter class], @selector(defaultCenter)), Default);
        const SwappedMethod service(class_getClassMethod([IMService class], @selector(notificationCenter)),
                                    Service);
        const SwappedMethod workspaces(
            class_getInstanceMethod([workspace class], @selector(notificationCenter)), Workspace);
        body();
        return recorded_.Take();
    }

    void Label(id object, const std::string &label) { recorded_.Label(object, label); }

private:
    RecordedMessages recorded_;
};

} // namespace

TEST_F(Withdrawal, VisitsTheFourCentresInTheirOrderAndNoOther)
{
    Host &host = Start();
    const Value observer = host.New(kObserver);
    Label(HandleOf<id>(host, observer), "the observer");

    const std::vector<std::string> messages = MessagesDuring([&] { host.Call(observer, "Destructor"); });

    EXPECT_THAT(messages,
                ElementsAre("distributed removeObserver: the observer",
                            "default removeObserver: the observer", "service removeObserver: the observer",
                            "workspace removeObserver: the observer"));
}

TEST_F(Withdrawal, LeavesTheHandleToTheDestructorHook)
{
    Host &host = Start();
    const Value observer = host.New(kObserver);
    const id handle = HandleOf<id>(host, observer);

    MessagesDuring([&] { host.Call(observer, "Destructor"); });

    EXPECT_EQ(HandleOf<id>(host, observer), handle);
    EXPECT_EQ([handle retainCount], 1u);
}

TEST_F(Withdrawal, HappensOnceWhenTheObserverIsFreed)
{
    Host &host = Start();
    Value observer = host.New(kObserver);
    Label(HandleOf<id>(host, observer), "the observer");

    EXPECT_EQ(MessagesDuring([&] { observer = Value(); }).size(), 4u);
}

TEST_F(Withdrawal, OfAnObserverWithoutAHandleVisitsNoCentre)
{
    Host &host = Start();
    Value observer = host.NewWithoutConstructor(kObserver);

    EXPECT_THAT(MessagesDuring([&] {
                    host.Call(observer, "Destructor");
                    observer = Value();
                }),
                IsEmpty());
}

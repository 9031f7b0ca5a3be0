// The centres that an observer removes itself from at its end, in order.
#include <gmock/gmock.h>

#include "tests/notifications/member_names.h"
#include "tests/support/recording_withdrawal.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Withdrawal : public PluginTest {
protected:
    std::vector<std::string> MessagesDuring(const std::function<void()> &body)
    {
        return MessagesToTheFourCenters(recorded_, body);
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

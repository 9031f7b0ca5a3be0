// C++ exceptions from a program's handler or from the host: the library lets them pass.
#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/notifications/delivery.h"
#include "tests/notifications/left_deliveries.h"
#include "tests/notifications/member_names.h"
#include "tests/support/leak_check_pause.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Instance;
using qzlhost::String;
using qzlhost::Value;
using ::testing::IsEmpty;

namespace {

/// An exception of no standard class.
struct Foreign {
    int number;
};

using ForeignExceptionInADelivery = PluginTest;

bool gThrows = false;
uint32_t (*gEncodingOf)(String *);
Instance *(*gNewInstance)(const char *);

uint32_t ThrowingEncodingOf(String *string)
{
    if (gThrows)
        throw Foreign{4};
    return gEncodingOf(string);
}

Instance *ThrowingNewInstance(const char *name)
{
    if (gThrows)
        throw Foreign{4};
    return gNewInstance(name);
}

/// An exception that a function of the host throws inside a member.
class ForeignExceptionInAMember : public PluginTest {
protected:
    void SetUp() override
    {
        Start({}, [](Host &unloaded) {
            void *(*const resolver)(const char *) = unloaded.Resolver();
            gEncodingOf = reinterpret_cast<uint32_t (*)(String *)>(resolver("REALGetStringEncoding"));
            gNewInstance = reinterpret_cast<Instance *(*)(const char *)>(resolver("PluginNewInstance"));
            unloaded.Replace("REALGetStringEncoding", reinterpret_cast<void *>(ThrowingEncodingOf));
            unloaded.Replace("PluginNewInstance", reinterpret_cast<void *>(ThrowingNewInstance));
        });
    }

    /// The number of the exception that leaves the member; 0 for none.
    int Thrown(const std::function<void()> &member)
    {
        const LogCapture log;
        int number = 0;
        gThrows = true;
        try {
            member();
        } catch (const Foreign &foreign) {
            number = foreign.number;
        }
        gThrows = false;
        EXPECT_THAT(log.Lines(), IsEmpty());
        EXPECT_TRUE(host().TakeException().IsNil());
        return number;
    }
};

} // namespace

TEST_F(ForeignExceptionInADelivery, PassesToWhoeverDelivers)
{
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver",
                            [](const Value &) { throw std::runtime_error("from the handler"); });
    const Value observer = program.NewObserver();
    const LogCapture log;
    std::string caught;

    try {
        Deliver(host, observer);
    } catch (const std::runtime_error &error) {
        caught = error.what();
    }

    EXPECT_EQ(caught, "from the handler");
    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ForeignExceptionInADelivery, GivesTheWrapperBack)
{
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver", [](const Value &) { throw Foreign{3}; });
    program.KeepNotifications();
    const Value observer = program.NewObserver();

    EXPECT_THROW(Deliver(host, observer), Foreign);

    ASSERT_EQ(program.received.size(), 1u);
    EXPECT_EQ(host.References(program.received[0].notification), 1);
    program.received.clear();
}

TEST_F(ForeignExceptionInADelivery, PassesThroughTheMemberThatPosts)
{
    const bool keepsObservers = CenterKeepsThrowingObservers();
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver", [](const Value &) { throw Foreign{5}; });
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {observer, "Throws"});
    int caught = 0;

    {
        // GNUstep's centre does not give back what it holds.
        const LeakCheckPause pause;
        try {
            host.Call(center, "postNotificationName", {"Throws"});
        } catch (const Foreign &foreign) {
            caught = foreign.number;
        }
    }

    EXPECT_EQ(caught, 5);
    ExpectCocoaObjects("GSNotification", 1);
    ExpectCocoaObjects("NSNotificationObserver", keepsObservers ? 1 : 0);
}

TEST_F(ForeignExceptionInAMember, PassesThroughOneWithoutAResult)
{
    const Value center = DefaultCenter(host());
    const Value observer = host().New(kObserver);
    EXPECT_EQ(Thrown([&] { host().Call(center, "postNotificationName", {"AName"}); }), 4);
    EXPECT_EQ(Thrown([&] { host().Call(center, "removeObserver", {observer, "AName"}); }), 4);
    EXPECT_EQ(Thrown([&] { host().New(kNotification, {"AName"}); }), 4);
}

TEST_F(ForeignExceptionInAMember, PassesThroughOneWithAResult)
{
    EXPECT_EQ(Thrown([&] { DefaultCenter(host()); }), 4);
    EXPECT_EQ(Thrown([&] { host().CallShared(kDistributed, "defaultCenter"); }), 4);
    EXPECT_EQ(Thrown([&] { host().CallShared(kNotification, "notificationWithName", {"AName"}); }), 4);
    const Value notification = host().New(kNotification, {"AName", "object", host().NewDictionary()});
    EXPECT_EQ(Thrown([&] { host().Get(notification, "userInfo"); }), 4);
}

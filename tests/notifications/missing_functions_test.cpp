// A program that observes, posts and reads, on hosts that each lack one function.
#include <algorithm>

#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class MissingFunction : public PluginTest, public ::testing::WithParamInterface<std::string> {
protected:
    /// Does what a program does with notifications, as far as the host allows it. Returns the number of
    /// events.
    size_t ObserveAndPost(Host &host)
    {
        ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
            if (!notification.IsNil())
                handles.push_back(host.Get(notification, "Handle").AsInteger());
        });
        const Value observer = program.NewObserver();
        const Value center = host.CallShared("NSNotificationCenterQZL", "defaultCenter");
        if (center.IsNil())
            return 0;
        try {
            host.Call(center, "addObserver", {observer, "MissingFunction", Value()});
        } catch (const qzlhost::ProgramException &) {
            return 0;
        }
        host.Call(center, "postNotificationName", {"MissingFunction"});
        host.Call(center, "postNotificationName", {"MissingFunction", "object"});
        const Value info = host.NewDictionary();
        host.DictionarySet(info, "key", "value");
        host.Call(center, "postNotificationName", {"MissingFunction", "object", info});
        const Value notification =
            host.CallShared("NSNotificationQZL", "notificationWithName", {"MissingFunction", "object", info});
        if (!notification.IsNil()) {
            for (const char *property : {"Name", "Description", "objectVariant", "userInfo", "objectHandle"})
                host.Get(notification, property);
            host.Call(center, "postNotification", {notification});
        }
        host.Call(center, "removeObserver", {observer, "MissingFunction"});
        host.Call(center, "removeObserver", {observer});
        const size_t events = program.received.size();
        host.Call(center, "postNotificationName", {"MissingFunction"});
        EXPECT_EQ(program.received.size(), events) << "an event after the observer was removed";
        return events;
    }

    /// The Cocoa notifications of the events.
    std::vector<int64_t> handles;
};

/// All functions of the host but the one that it must have.
std::vector<std::string> Dispensable()
{
    std::vector<std::string> functions = Host::Functions();
    functions.erase(std::remove(functions.begin(), functions.end(), "RegisterPluginVersion"),
                    functions.end());
    return functions;
}

std::string TestName(const ::testing::TestParamInfo<std::string> &info)
{
    return info.param;
}

} // namespace

TEST_P(MissingFunction, IsNoError)
{
    const std::string &missing = GetParam();
    Host &host = Start({}, [&](Host &unloaded) { unloaded.Lack(missing); });
    if (missing == "PluginRegisterClass") {
        EXPECT_TRUE(host.RegisteredClasses().empty());
        return;
    }
    const size_t events = ObserveAndPost(host);

    if (missing == "PluginNewInstance" || missing == "GetEventInstance")
        EXPECT_EQ(events, 0u);
    else
        EXPECT_EQ(events, 4u);
    // Without these the library cannot give its references back.
    if (missing == "REALUnlockString")
        ExpectLeaks("String", host.Leaks().size());
    if (missing == "REALUnlockObject") {
        ExpectLeaks("", host.Leaks().size());
        ExpectCocoaObjects("GSNotification", 4);
        // Keeps them reachable, so that the leak checker does not report them.
        static const auto *const leftBehind = new std::vector<int64_t>(handles);
        EXPECT_EQ(leftBehind->size(), 4u);
    }
}

INSTANTIATE_TEST_SUITE_P(OneAtATime, MissingFunction, ::testing::ValuesIn(Dispensable()), TestName);

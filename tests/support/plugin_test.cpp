// Loads the library into a host for a test, and checks the accounts after it.
#include "tests/support/plugin_test.h"

#include <algorithm>
#include <thread>

#include "tests/support/cocoa_objects.h"

using qzlhost::Host;
using qzlhost::HostOptions;
using qzlhost::ProgramException;
using qzlhost::Value;

namespace {

/// Cocoa classes whose objects the library makes or holds. A test ends without any left.
constexpr const char *kCountedClasses[] = {"NSNotificationObserver", "GSNotification"};

const std::thread::id kMainThread = std::this_thread::get_id();

std::string Joined(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += "  " + line + "\n";
    return text;
}

} // namespace

HostTest::HostTest() = default;
HostTest::~HostTest() = default;

Host &HostTest::MakeHost(HostOptions options)
{
    host_.emplace(options);
    pool_.emplace();
    CountCocoaObjects();
    return *host_;
}

void HostTest::ExpectLeaks(const std::string &text, size_t count)
{
    expectedLeaks_.push_back({text, count});
}

void HostTest::ExpectCocoaObjects(const std::string &className, int count)
{
    expectedCocoaObjects_[className] = count;
}

void HostTest::TearDown()
{
    if (!host_)
        return;
    pool_.reset();

    std::vector<std::string> leaks = host_->Leaks();
    for (const ExpectedLeak &expected : expectedLeaks_) {
        const auto kept = std::partition(leaks.begin(), leaks.end(), [&](const std::string &leak) {
            return leak.find(expected.text) == std::string::npos;
        });
        EXPECT_EQ(static_cast<size_t>(leaks.end() - kept), expected.count) << "leaks of " << expected.text;
        leaks.erase(kept, leaks.end());
    }
    EXPECT_TRUE(leaks.empty()) << "host values left over:\n" << Joined(leaks);
    const std::vector<std::string> mistakes = host_->Mistakes();
    EXPECT_TRUE(mistakes.empty()) << "misuse of the host:\n" << Joined(mistakes);
    for (const char *className : kCountedClasses) {
        const int expected = expectedCocoaObjects_[className];
        // Foundation's own notifications may wait for the run loop.
        host_->RunUntil([&] { return LiveCocoaObjects(className) == expected; }, 2);
        EXPECT_EQ(LiveCocoaObjects(className), expected) << className << " objects left over";
    }
    host_.reset();
}

Host &PluginTest::Start(HostOptions options, const std::function<void(Host &)> &prepare)
{
    Host &host = MakeHost(options);
    if (prepare)
        prepare(host);
    host.Load(LibraryPath());
    return host;
}

ObserverProgram::ObserverProgram(Host &host, const std::string &className,
                                 std::function<void(const Value &notification)> onEvent)
    : host_(host), className_(className)
{
    qzlhost::ClassDefinition definition;
    definition.name = className;
    definition.super = "NSNotificationObserverQZL";
    definition.events.push_back(
        {"GotNotification(notification as NSNotificationQZL)",
         [this, onEvent = std::move(onEvent)](const Value &, const std::vector<Value> &arguments) {
             const Value &notification = arguments.at(0);
             Received event;
             event.onMainThread = std::this_thread::get_id() == kMainThread;
             if (!notification.IsNil())
                 event.name = host_.Get(notification, "Name").AsString();
             if (keeps_)
                 event.notification = notification;
             received.push_back(event);
             if (onEvent)
                 onEvent(notification);
             return Value();
         }});
    host.DefineClass(std::move(definition));
}

Value ObserverProgram::NewObserver()
{
    return host_.New(className_);
}

Value DefaultCenter(Host &host)
{
    return host.CallShared("NSNotificationCenterQZL", "defaultCenter");
}

void ExpectException(const std::function<void()> &member, const std::string &className,
                     const std::string &message)
{
    try {
        member();
        ADD_FAILURE() << "no exception; expected " << className;
    } catch (const ProgramException &exception) {
        EXPECT_EQ(exception.ClassName(), className);
        EXPECT_EQ(exception.Message(), message);
        EXPECT_EQ(exception.ErrorNumber(), 0);
    }
}

std::string ExceptionClassOf(const std::function<void()> &member)
{
    try {
        member();
        return "";
    } catch (const ProgramException &exception) {
        return exception.ClassName();
    }
}

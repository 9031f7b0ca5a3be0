// A test that loads the library into a host and checks the accounts at its end.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"
#include "tests/support/library_under_test.h"

/// A test with a host, which checks the accounts at its end. The library keeps what it learnt of its host for
/// the life of the process, so ctest runs each test in a process of its own.
class HostTest : public ::testing::Test {
protected:
    HostTest();
    ~HostTest() override;

    /// Makes the host and a pool, and starts counting Cocoa objects.
    qzlhost::Host &MakeHost(qzlhost::HostOptions options);

    qzlhost::Host &host() { return *host_; }

    /// Expects that exactly `count` values are left over whose description contains this text.
    void ExpectLeaks(const std::string &text, size_t count);

    /// Expects that `count` Cocoa objects of this class are left over, one of those that are counted.
    void ExpectCocoaObjects(const std::string &className, int count);

    /// Checks the accounts of the host's references and of the Cocoa objects that the library makes.
    void TearDown() override;

private:
    struct ExpectedLeak {
        std::string text;
        size_t count;
    };

    std::optional<qzlhost::Host> host_;
    std::optional<qzlhost::AutoreleasePool> pool_;
    std::vector<ExpectedLeak> expectedLeaks_;
    std::map<std::string, int> expectedCocoaObjects_;
};

/// A test that loads the built library into its host.
class PluginTest : public HostTest {
protected:
    /// Makes the host, lets `prepare` change it, and loads the library.
    qzlhost::Host &Start(qzlhost::HostOptions options = {},
                         const std::function<void(qzlhost::Host &)> &prepare = nullptr);
};

/// A notification that reached a program.
struct Received {
    std::string name;
    bool onMainThread = false;
    /// The event's argument; Nil unless the program keeps it.
    qzlhost::Value notification;
};

/// A program's own host class that implements "GotNotification" and records each event.
class ObserverProgram {
public:
    /// Defines the class in the host. `onEvent` runs inside each event.
    explicit ObserverProgram(qzlhost::Host &host, const std::string &className = "ProgramObserver",
                             std::function<void(const qzlhost::Value &notification)> onEvent = nullptr);

    /// A new observer of the class.
    qzlhost::Value NewObserver();

    /// From now on `received` keeps the notifications, too.
    void KeepNotifications() { keeps_ = true; }

    std::vector<Received> received;

private:
    qzlhost::Host &host_;
    std::string className_;
    bool keeps_ = false;
};

/// A new wrapper of the process's notification centre.
qzlhost::Value DefaultCenter(qzlhost::Host &host);

/// The handle in a wrapper's instance data.
template <typename Object>
Object HandleOf(qzlhost::Host &host, const qzlhost::Value &instance)
{
    return *static_cast<Object *>(host.InstanceData(instance));
}

#ifdef __OBJC__
/// A new instance of a host class that wraps Cocoa objects, around this one, with a retain of its own.
inline qzlhost::Value WrapperOf(qzlhost::Host &host, std::string_view className, id object)
{
    const qzlhost::Value instance = host.NewWithoutConstructor(className);
    *static_cast<id *>(host.InstanceData(instance)) = [object retain];
    return instance;
}
#endif

/// Calls `member` and expects the host exception with this class and message.
void ExpectException(const std::function<void()> &member, const std::string &className,
                     const std::string &message);

/// The class of the host exception that `member` raises; empty for none.
std::string ExceptionClassOf(const std::function<void()> &member);

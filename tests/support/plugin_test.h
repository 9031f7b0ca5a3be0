// A test that loads the library into a host and looks at the accounts when it ends.
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

/// A test with a host, which looks at the accounts when it ends. The library keeps what it learnt of its host
/// for the life of the process, so each test runs in a process of its own; ctest sees to that.
class HostTest : public ::testing::Test {
protected:
    HostTest();
    ~HostTest() override;

    /// Makes the host and a pool, and starts counting Cocoa objects.
    qzlhost::Host &MakeHost(qzlhost::HostOptions options);

    qzlhost::Host &host() { return *host_; }

    /// What stays behind on purpose: values whose description holds this text. Fails unless there are so
    /// many.
    void ExpectLeaks(const std::string &text, size_t count);

    /// Cocoa objects of this class, of those that are counted, that stay behind on purpose.
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
    /// The wrapper that the event brought; Nil unless the program keeps it.
    qzlhost::Value notification;
};

/// A host class of a program's own that implements "GotNotification" and notes what it gets.
class ObserverProgram {
public:
    /// Defines the class in the host. `onEvent` runs inside each event.
    explicit ObserverProgram(qzlhost::Host &host, const std::string &className = "ProgramObserver",
                             std::function<void(const qzlhost::Value &notification)> onEvent = nullptr);

    /// A new observer of the class.
    qzlhost::Value NewObserver();

    /// Keep the wrappers that events bring.
    void KeepNotifications() { keeps_ = true; }

    std::vector<Received> received;

private:
    qzlhost::Host &host_;
    std::string className_;
    bool keeps_ = false;
};

/// A new wrapper of the process's notification centre.
qzlhost::Value DefaultCenter(qzlhost::Host &host);

/// What the handle in a wrapper's instance data refers to.
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

/// The class of the host exception that `member` ends with; empty where it ends well.
std::string ExceptionClassOf(const std::function<void()> &member);

/// Whether a text of `texts` holds `part`.
bool AnyHolds(const std::vector<std::string> &texts, const std::string &part);

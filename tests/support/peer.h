// A host program in another process, driven by a test.
#pragma once

#include <nlohmann/json.hpp>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/daemon.h"

/// The program did not answer in time, ended, or met an exception of the library.
class PeerError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One peer_program. Its commands and events are those of tests/notifications/peer_program.cpp. Every wait
/// has a limit, after which it throws PeerError. Main thread only.
class Peer {
public:
    /// Starts the program with the library under test, and waits until it is ready.
    Peer(const Daemon &daemon, const std::string &name);
    /// Kills it if it still runs.
    ~Peer();
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    /// The result of the command. Throws PeerError if the library raises an exception.
    nlohmann::json Do(const nlohmann::json &command);
    /// The two halves of Do. Between them the program works.
    void Begin(const nlohmann::json &command);
    nlohmann::json Finish();
    /// The class and message of the exception that the command raises; null for none.
    nlohmann::json RefusalOf(const nlohmann::json &command);
    /// The next `count` events in order; waits for them.
    std::vector<nlohmann::json> Events(size_t count);
    /// The events that have arrived; does not wait.
    std::vector<nlohmann::json> RemainingEvents();

    /// The number of all events before the program's last answer.
    size_t EventsAtLastAnswer() const { return eventsAtLastAnswer_; }

    void Kill();
    /// Suspends the program, or resumes it.
    void Stop(bool stops);
    /// Lets the program end. Returns what its host reports: "leaks" and "mistakes".
    nlohmann::json Quit();
    bool IsAlive() { return !process_.HasEnded(); }
    pid_t ProcessId() const { return process_.Id(); }
    /// As ChildProcess::Status.
    std::optional<int> ExitStatus() { return process_.Status(); }

private:
    /// The next answer or refusal.
    nlohmann::json Answer();
    void Read();
    template <typename Ready>
    void WaitFor(const char *what, std::unique_lock<std::mutex> &lock, Ready ready);

    std::string name_;
    ChildProcess process_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<nlohmann::json> answers_;
    std::deque<nlohmann::json> events_;
    bool ended_ = false;
    size_t eventsAtLastAnswer_ = 0;
    std::thread reader_;
};

// Another process in which a host program runs, driven by a test.
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

/// The program did not answer in time, ended, or was refused something.
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

    /// What the command returns. Throws PeerError where the library raises an exception.
    nlohmann::json Do(const nlohmann::json &command);
    /// The two halves of Do: in between the program is at work.
    void Begin(const nlohmann::json &command);
    nlohmann::json Finish();
    /// The class and message of the exception that the command ends with; null where it ends well.
    nlohmann::json RefusalOf(const nlohmann::json &command);
    /// The next `count` events, in their order, once they are there.
    std::vector<nlohmann::json> Events(size_t count);
    /// Those that are left, without waiting.
    std::vector<nlohmann::json> RemainingEvents();

    /// How many events the program had had altogether when it gave its last answer.
    size_t EventsAtLastAnswer() const { return eventsAtLastAnswer_; }

    void Kill();
    /// Keeps the program from running, or lets it go on.
    void Stop(bool stops);
    /// Lets the program end. Returns what its host reports: "leaks" and "mistakes".
    nlohmann::json Quit();
    bool IsAlive() { return !process_.HasEnded(); }
    pid_t ProcessId() const { return process_.Id(); }
    /// As ChildProcess has it.
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

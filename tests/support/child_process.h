// A child process of a test, which does not outlive it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Names and values.
using EnvironmentVariables = std::vector<std::pair<std::string, std::string>>;

/// Asks `done` until it returns true or the time is over. Returns whether it was done.
bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit);

/// A program that was started. Killed and waited for in the destructor, and by the system when the test ends
/// before.
class ChildProcess {
public:
    enum class Pipes { None, InputAndOutput };

    /// Starts `command`, found along PATH, with these variables added to the environment. Throws
    /// std::system_error. On the main thread: the child dies with the thread that started it.
    ChildProcess(const std::vector<std::string> &command, const EnvironmentVariables &environment,
                 Pipes pipes);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    pid_t Id() const { return id_; }
    /// The ends of its pipes that the test holds; -1 without pipes.
    int Input() const { return input_; }
    int Output() const { return output_; }
    void CloseInput();

    /// Does nothing once the process has ended.
    void Signal(int signal);
    bool HasEnded();
    /// Returns whether it ended in time.
    bool WaitForEnd(std::chrono::milliseconds limit);
    /// Its exit status, or the negative number of the signal that ended it; nothing while it runs.
    std::optional<int> Status();

private:
    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::optional<int> status_;
};

// A child process that does not outlive its test.
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

/// Calls `done` until it returns true or the time is up. Returns whether it returned true.
bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit);

/// A running program. The destructor kills it and waits for its end; the system kills it if the test dies
/// first.
class ChildProcess {
public:
    enum class Pipes { None, InputAndOutput };

    /// Starts `command`, found along PATH, with these variables added to the environment. Throws
    /// std::system_error. Main thread only: the child dies with the thread that started it.
    ChildProcess(const std::vector<std::string> &command, const EnvironmentVariables &environment,
                 Pipes pipes);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    pid_t Id() const { return id_; }
    /// The test's ends of its pipes; -1 without pipes.
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

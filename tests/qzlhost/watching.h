// A "qzlhost watch" that runs, for tests that post to it.
#pragma once

#include <csignal>

#include "tests/support/child_process.h"
#include "tests/support/daemon.h"

/// Ends with the test at the latest.
class Watching {
public:
    /// Starts it with these arguments after the library's, as the shell reads them.
    Watching(const std::string &arguments, const Daemon &daemon);

    /// The next line that it prints, errors included; empty when it ended or printed nothing for a long time.
    std::string NextLine();
    /// As a user's Ctrl-C.
    void Interrupt() { process_.Signal(SIGINT); }
    void Terminate() { process_.Signal(SIGTERM); }
    /// Waits for its end. Its exit status; nothing when it goes on for a long time.
    std::optional<int> EndStatus();

private:
    ChildProcess process_;
    std::string unread_;
};

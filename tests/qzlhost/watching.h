// A running "qzlhost watch", for tests that post to it.
#pragma once

#include <csignal>

#include "tests/support/child_process.h"
#include "tests/support/daemon.h"

/// A process, which is killed in the destructor if it still runs.
class Watching {
public:
    /// Starts it with these arguments after the library's, as the shell reads them.
    Watching(const std::string &arguments, const Daemon &daemon);

    /// The next line that it prints, errors included; empty if it has ended, or prints none for a minute.
    std::string NextLine();
    /// Does what a user's Ctrl-C does.
    void Interrupt() { process_.Signal(SIGINT); }
    void Terminate() { process_.Signal(SIGTERM); }
    /// Waits for its end, and returns its exit status; none if it still runs after a minute.
    std::optional<int> EndStatus();

private:
    ChildProcess process_;
    std::string unread_;
};

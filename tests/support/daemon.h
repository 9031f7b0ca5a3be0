// A test's own notification daemon, through which GNUstep sends notifications between processes.
#pragma once

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/private_folder.h"

/// A running daemon. Only processes that know its folder can reach it. The destructor returns once the
/// daemon has ended and its folder is gone.
class Daemon {
public:
    /// Returns once clients can reach it. Throws std::runtime_error. Main thread only.
    Daemon();
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

    /// Environment variables for a process that uses this daemon.
    EnvironmentVariables Environment() const;
    const std::string &Folder() const { return folder_.Path(); }
    pid_t ProcessId() const { return process_.Id(); }

private:
    PrivateFolder folder_;
    ChildProcess process_;
};

// A notification daemon of a test's own: what GNUstep carries notifications between processes with.
#pragma once

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/private_folder.h"

/// A running daemon, which only processes that know its folder reach. It is killed in the
/// destructor, which returns once it has ended and its folder is gone.
class Daemon {
public:
    /// Returns once clients can reach it. Throws std::runtime_error. On the main thread.
    Daemon();
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

    /// Variables for the environment of a process that is to use this daemon.
    EnvironmentVariables Environment() const;
    const std::string &Folder() const { return folder_.Path(); }
    pid_t ProcessId() const { return process_.Id(); }

private:
    PrivateFolder folder_;
    ChildProcess process_;
};

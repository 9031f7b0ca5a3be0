// A running "qzlhost watch", for tests that post to it.
#include "tests/qzlhost/watching.h"

#include <poll.h>
#include <unistd.h>

#include "tests/support/library_under_test.h"

namespace {

constexpr std::chrono::seconds kLimit{60};

std::vector<std::string> ShellCommand(const std::string &arguments)
{
    return {"/bin/sh", "-c", "exec " QZLHOST_PATH " watch " + LibraryPath() + " " + arguments + " 2>&1"};
}

} // namespace

Watching::Watching(const std::string &arguments, const Daemon &daemon)
    : process_(ShellCommand(arguments), daemon.Environment(), ChildProcess::Pipes::InputAndOutput)
{
}

std::string Watching::NextLine()
{
    size_t end = 0;
    while ((end = unread_.find('\n')) == std::string::npos) {
        pollfd output{process_.Output(), POLLIN, 0};
        char buffer[4096];
        if (poll(&output, 1, std::chrono::milliseconds(kLimit).count()) != 1)
            return "";
        const ssize_t count = read(process_.Output(), buffer, sizeof buffer);
        if (count <= 0)
            return "";
        unread_.append(buffer, static_cast<size_t>(count));
    }
    const std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

std::optional<int> Watching::EndStatus()
{
    process_.WaitForEnd(kLimit);
    return process_.Status();
}

// Runs notifications-check as a user runs it.
#include "tests/check/program.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

std::string Command(const std::string &arguments, const Daemon &daemon, const std::string &variables)
{
    std::string command = variables + " ";
    for (const auto &[name, value] : daemon.Environment())
        command += name + "='" + value + "' ";
    // The dylib is chosen by the test's environment, and wants the program that was built for the same
    // system.
    const bool isForMacos = std::getenv("QZL_LIBRARY") != nullptr;
    return command + (isForMacos ? MACHO_RUN " " MACOS_CHECK_PATH : CHECK_PATH) + " " + arguments;
}

Outcome Read(int descriptor, pid_t child)
{
    Outcome outcome;
    char buffer[4096];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        outcome.output.append(buffer, static_cast<size_t>(count));
    close(descriptor);
    int status = 0;
    waitpid(child, &status, 0);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace

Outcome RunCheck(const std::string &arguments, const Daemon &daemon, const std::string &variables)
{
    const std::string command = Command(arguments, daemon, variables);
    int ends[2];
    if (pipe(ends) != 0)
        return {};
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    close(ends[1]);
    return Read(ends[0], child);
}

Outcome RunCheckOnTerminal(const std::string &arguments, const Daemon &daemon, const std::string &variables)
{
    const std::string command = Command(arguments, daemon, variables);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    return Read(terminal, child);
}

std::vector<ReportLine> LinesOfReport(const std::string &json)
{
    std::vector<ReportLine> lines;
    const nlohmann::json report = nlohmann::json::parse(json);
    for (const auto &line : report.at("lines"))
        lines.push_back({line.at("kind"), line.at("what"), line.at("expected"), line.at("came")});
    return lines;
}

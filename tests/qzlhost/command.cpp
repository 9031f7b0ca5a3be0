// Runs qzlhost as a user runs it.
#include "tests/qzlhost/command.h"

#include <sys/wait.h>

#include <cstdio>

Outcome RunCommand(const std::string &arguments, const EnvironmentVariables &environment)
{
    std::string command;
    for (const auto &[name, value] : environment)
        command += name + "='" + value + "' ";
    command += QZLHOST_PATH " " + arguments + " 2>&1";

    Outcome outcome;
    FILE *const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return outcome;
    char buffer[4096];
    while (const size_t count = fread(buffer, 1, sizeof buffer, pipe))
        outcome.output.append(buffer, count);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

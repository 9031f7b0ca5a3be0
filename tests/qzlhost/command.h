// Runs qzlhost as a user runs it.
#pragma once

#include <string>

#include "tests/support/child_process.h"

struct Outcome {
    int status = -1;
    /// Everything that it printed, errors included.
    std::string output;
};

/// Runs it to its end with these arguments, as the shell reads them, and with these variables added to the
/// environment.
Outcome RunCommand(const std::string &arguments, const EnvironmentVariables &environment = {});

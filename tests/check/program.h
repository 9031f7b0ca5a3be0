// Runs notifications-check as a user runs it: the program for this platform, or the one for macOS with the
// dylib.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/daemon.h"

struct Outcome {
    int status = -1;
    /// What it printed; on a terminal with its errors, which otherwise go where the test's go.
    std::string output;
};

/// Runs it to its end with these arguments, as the shell reads them. The variables stand before the command.
Outcome RunCheck(const std::string &arguments, const Daemon &daemon, const std::string &variables = "");

/// As RunCheck, but on a terminal.
Outcome RunCheckOnTerminal(const std::string &arguments, const Daemon &daemon,
                           const std::string &variables = "");

/// A line of its report.
struct ReportLine {
    std::string kind, what, expected, came;
};

/// The lines of a report; throws nlohmann::json::exception for a text that is none.
std::vector<ReportLine> LinesOfReport(const std::string &json);

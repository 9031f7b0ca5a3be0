// Whether a program with one faulty call of a host function ended as it should.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/sweep/faults.h"
#include "tests/sweep/program.h"

/// What one process observed in two runs of the program, the first with a faulty call or none.
struct Sight {
    std::vector<Outcome> first;
    std::vector<Outcome> second;
    /// How often each host function was called in the first run.
    std::map<std::string, int> calls;
    /// The host's accounts at the end.
    std::vector<std::string> leaks;
    std::vector<std::string> mistakes;
    /// The Cocoa objects left over, of each class that is counted.
    std::map<std::string, int> cocoaObjects;
    /// The lines of Foundation's log.
    std::vector<std::string> log;
};

/// What is wrong with the sight; nothing for a good one. `sound` is the sight without a fault.
std::vector<std::string> Complaints(const FaultyCall &call, const Sight &seen, const Sight &sound);

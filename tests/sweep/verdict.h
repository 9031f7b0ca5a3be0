// Whether a program with one faulty call of a host function ended as it should.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/sweep/faults.h"
#include "tests/sweep/program.h"

/// What one process saw, which ran the program twice: once with a faulty call, or none, and once without.
struct Sight {
    std::vector<Outcome> first;
    std::vector<Outcome> second;
    /// How often each host function was called in the first run.
    std::map<std::string, int> calls;
    /// What the host's books say at the end.
    std::vector<std::string> leaks;
    std::vector<std::string> mistakes;
    /// How many Cocoa objects of each class that is looked at have been left over.
    std::map<std::string, int> cocoaObjects;
    /// What went to Foundation's log.
    std::vector<std::string> log;
};

/// What is wrong with the sight; nothing for a good one. `sound` is the sight without a fault.
std::vector<std::string> Complaints(const FaultyCall &call, const Sight &seen, const Sight &sound);

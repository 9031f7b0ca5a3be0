// Runs the swept program in a process of its own.
#pragma once

#include <optional>
#include <string>

#include "tests/sweep/verdict.h"

/// Runs the program twice in a copy of this process, with the faulty call in the first run; without a fault
/// for a call number of 0. Returns nothing if the process died or hung; `end` says how. This process has
/// one thread.
std::optional<Sight> SightOf(qzlhost::Host &host, SweptProgram &program, const FaultyCall &call,
                             std::string &end);

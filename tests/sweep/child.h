// Runs the swept program in a process of its own.
#pragma once

#include <optional>
#include <string>

#include "tests/sweep/verdict.h"

/// Runs the program twice in a copy of this process, with the faulty call in the first run; call number 0 is
/// no fault. Returns nothing if the copy died or hung; `end` then says how. This process must have one
/// thread.
std::optional<Sight> SightOf(qzlhost::Host &host, SweptProgram &program, const FaultyCall &call,
                             std::string &end);

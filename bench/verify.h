// Holds floors against the library: both do the same, through the same host functions.
#pragma once

#include <string>

#include "bench/work.h"

/// The differences between the sides of a work, one a line; empty if there are none. The host must keep
/// accounts.
std::string DifferencesOf(const Sides &sides);

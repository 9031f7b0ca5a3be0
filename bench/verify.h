// Holds floors against the library: both do the same, through the same host functions.
#pragma once

#include <string>

#include "bench/work.h"

/// What the sides of a work differ in, in lines; empty where they do not. The host keeps accounts.
std::string DifferencesOf(const Sides &sides);

// Random host values.
#pragma once

#include <cstdint>

#include "host/host.h"

/// A value of any kind that the seed gives, with at most `depth` containers in each other: never one that
/// ends a conversion with an exception. The host has the class "ProgramObject".
qzlhost::Value RandomValue(qzlhost::Host &host, uint64_t seed, int depth);

// Counts what a process allocates; in a library that is loaded in front of all others.
#pragma once

#include <cstdint>

extern "C" {
/// From now on the peak counts.
void StartCountingAllocations();
/// The most bytes that were allocated at once since then, beyond those that were allocated before.
int64_t PeakOfAllocations();
}

// Measurements in processes of their own, each a new run of this program.
#pragma once

#include "bench/measure.h"

/// What a run of each side allocates at its peak.
Measurement MeasurePeaks(const Work &work);

/// The processor time of loading the library, and of loading one that registers nothing.
Measurement MeasureLoads();

// Each prints one number, in the process of its own.

void PrintPeak(Side &side);
void PrintLoadTime(const std::string &library);

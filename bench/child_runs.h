// Measurements in processes of their own, each a new run of this program.
#pragma once

#include "bench/measure.h"

/// What a run of the work allocates at its peak, of both sides.
Measurement MeasurePeaks(const Work &work);

/// The processor time of loading the library, and of loading one that registers nothing.
Measurement MeasureLoads();

// In the process of their own: each prints one number.

void PrintPeak(Side &side);
void PrintLoadTime(const std::string &library);

// Measures both sides of a work in turn.
#pragma once

#include <cstdint>

#include "bench/work.h"

struct Measurement {
    /// Medians.
    double ours = 0;
    double floor = 0;
    /// The median of the rounds' ratios of ours to the floor, and their 10th and 90th percentiles.
    double ratio = 0;
    double low = 0;
    double high = 0;
    int64_t rounds = 0;
};

/// Summarizes rounds, each with one value of ours and one of the floor's. There is at least one.
Measurement Summarize(const std::vector<double> &ours, const std::vector<double> &floor);

/// The processor time of a run, in nanoseconds, of both sides: a short batch of one, then one of the other,
/// many times.
Measurement MeasureTime(const Sides &sides);

// Times works in batches, as the library's own measurements are timed, and prints the median of each.
#pragma once

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/timing.h"

inline double MedianOf(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Prints a figure as one line of JSON.
inline void Print(const char *work, double nanoseconds)
{
    std::printf("{\"work\": \"%s\", \"nanoseconds\": %.6g}\n", work, nanoseconds);
    std::fflush(stdout);
}

/// Prints the processor time of one `run()` on this thread, in batches of 0.2 milliseconds or more. What runs
/// give is kept until the batch is over and then handed to `giveBack`, outside the measured time; `settle`
/// is called after that.
template <typename Run, typename GiveBack, typename Settle>
void Measure(const char *work, Run run, GiveBack giveBack, Settle settle)
{
    constexpr double kShortestBatch = 200e3;
    constexpr int kMostRunsInABatch = 4096;
    constexpr double kTimeForAWork = 200e6;
    std::vector<decltype(run())> results;
    const auto batch = [&](int times) {
        results.resize(static_cast<size_t>(times));
        const double start = Now(CLOCK_THREAD_CPUTIME_ID);
        for (auto &result : results)
            result = run();
        const double time = Now(CLOCK_THREAD_CPUTIME_ID) - start;
        for (auto &result : results)
            giveBack(result);
        results.clear();
        settle();
        return time;
    };
    int times = 1;
    while (batch(times) < kShortestBatch && times < kMostRunsInABatch)
        times *= 2;
    std::vector<double> each;
    const double end = Now(CLOCK_MONOTONIC) + kTimeForAWork;
    do
        each.push_back(batch(times) / times);
    while (Now(CLOCK_MONOTONIC) < end || each.size() < 11);
    Print(work, MedianOf(std::move(each)));
}

/// The same for runs that return nothing.
template <typename Run>
void Measure(const char *work, Run run)
{
    const auto counted = [&run] {
        run();
        return 0;
    };
    Measure(work, counted, [](int) {}, [] {});
}

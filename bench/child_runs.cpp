// Runs this program again for what needs a process of its own.
#include "bench/child_runs.h"

#include <dlfcn.h>
#include <stdio.h>

#include <iostream>
#include <memory>
#include <stdexcept>

#include "bench/allocation_peak.h"
#include "bench/timing.h"
#include "host/host.h"

namespace {

constexpr int kLoads = 41;

std::string Quoted(const std::string &word)
{
    return "'" + word + "'";
}

/// The number that this program prints with these arguments and this library in front of all others. Throws
/// std::runtime_error.
double NumberOf(const std::string &arguments, const std::string &preloaded = "")
{
    const std::string command = (preloaded.empty() ? "" : "LD_PRELOAD=" + Quoted(preloaded) + " ") +
                                Quoted(QZL_BENCH_PROGRAM) + " " + arguments;
    const std::unique_ptr<FILE, int (*)(FILE *)> output(popen(command.c_str(), "r"), pclose);
    double number = 0;
    if (!output || fscanf(output.get(), "%lf", &number) != 1)
        throw std::runtime_error("no number from " + command);
    return number;
}

/// A function of the library that counts allocations. Throws std::runtime_error if that is not loaded.
template <typename Function>
Function *CounterFunction(const char *name)
{
    void *const found = dlsym(RTLD_DEFAULT, name);
    if (!found)
        throw std::runtime_error("allocations are not counted in this process");
    return reinterpret_cast<Function *>(found);
}

} // namespace

Measurement MeasurePeaks(const Work &work)
{
    const std::string arguments = "--peak " + Quoted(work.name);
    return Summarize({NumberOf(arguments, QZL_ALLOCATION_PEAK)},
                     {NumberOf(arguments + " --floor", QZL_ALLOCATION_PEAK)});
}

Measurement MeasureLoads()
{
    std::vector<double> ours;
    std::vector<double> floor;
    for (int i = 0; i < kLoads; ++i) {
        ours.push_back(NumberOf("--load " + Quoted(QZL_LIBRARY_PATH)));
        floor.push_back(NumberOf("--load " + Quoted(QZL_EMPTY_LIBRARY)));
    }
    return Summarize(ours, floor);
}

void PrintPeak(Side &side)
{
    const auto start = CounterFunction<decltype(StartCountingAllocations)>("StartCountingAllocations");
    const auto peak = CounterFunction<decltype(PeakOfAllocations)>("PeakOfAllocations");
    // The first run finds functions and keeps them.
    for (const bool counted : {false, true}) {
        const qzlhost::AutoreleasePool pool;
        side.Prepare(1);
        if (counted)
            start();
        side.Run(1);
        if (counted)
            std::cout << peak() << '\n';
        side.GiveBack();
    }
}

void PrintLoadTime(const std::string &library)
{
    qzlhost::HostOptions options;
    options.accounts = false;
    static auto *const host = new qzlhost::Host(options);
    const double start = Now(CLOCK_THREAD_CPUTIME_ID);
    host->Load(library);
    std::cout << Now(CLOCK_THREAD_CPUTIME_ID) - start << '\n';
}

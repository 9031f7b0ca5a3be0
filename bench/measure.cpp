// Measures in rounds: a batch of ours and a batch of the floor's, which goes first in every other round.
#include "bench/measure.h"

#include <algorithm>
#include <cmath>

#include "bench/timing.h"
#include "host/host.h"

namespace {

constexpr double kShortestBatch = 200e3;
constexpr int64_t kMostRunsInABatch = 4096;
constexpr double kTimeForAWork = 400e6;
constexpr double kFewestRounds = 11;
constexpr double kMostRounds = 301;

/// The processor time of so many runs.
double Batch(Side &side, int64_t times)
{
    const qzlhost::AutoreleasePool pool;
    side.Prepare(times);
    const double start = Now(CLOCK_THREAD_CPUTIME_ID);
    side.Run(times);
    const double time = Now(CLOCK_THREAD_CPUTIME_ID) - start;
    side.GiveBack();
    return time;
}

/// How many runs make a batch that is long enough to be timed.
int64_t RunsInABatch(Side &side)
{
    int64_t times = 1;
    while (Batch(side, times) < kShortestBatch && times < kMostRunsInABatch)
        times *= 2;
    return times;
}

/// The value that this part of the values does not exceed.
double Quantile(std::vector<double> values, double part)
{
    const auto place =
        static_cast<std::ptrdiff_t>(std::lround(part * static_cast<double>(values.size() - 1)));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<size_t>(place)];
}

/// Both sides of a work, with batches of a fixed length.
class Rounds {
public:
    explicit Rounds(const Sides &sides)
        : sides_(sides), isGrowth_(sides.oursElements != sides.floorElements),
          oursTimes_(RunsInABatch(*sides.ours)), floorTimes_(RunsInABatch(*sides.floor))
    {
        if (!isGrowth_)
            oursTimes_ = floorTimes_ = std::max(oursTimes_, floorTimes_);
    }

    /// The two sides in one order or the other.
    void Run(bool oursFirst)
    {
        if (oursFirst)
            RunOurs();
        RunFloor();
        if (!oursFirst)
            RunOurs();
    }

    /// So far.
    Measurement Result() const { return Summarize(ours_, floor_); }

    void Forget()
    {
        ours_.clear();
        floor_.clear();
    }

private:
    void RunOurs()
    {
        Settle();
        ours_.push_back(Batch(*sides_.ours, oursTimes_) /
                        static_cast<double>(oursTimes_ * sides_.oursElements));
    }

    void RunFloor()
    {
        Settle();
        floor_.push_back(Batch(*sides_.floor, floorTimes_) /
                         static_cast<double>(floorTimes_ * sides_.floorElements));
    }

    /// Lets the allocator put in order what a large input gave back, before anything is timed.
    void Settle()
    {
        if (isGrowth_)
            Batch(*sides_.floor, floorTimes_);
    }

    const Sides &sides_;
    const bool isGrowth_;
    int64_t oursTimes_;
    int64_t floorTimes_;
    std::vector<double> ours_;
    std::vector<double> floor_;
};

} // namespace

Measurement Summarize(const std::vector<double> &ours, const std::vector<double> &floor)
{
    std::vector<double> ratios(ours.size());
    std::transform(ours.begin(), ours.end(), floor.begin(), ratios.begin(), std::divides<>());
    return {Quantile(ours, 0.5),   Quantile(floor, 0.5),  Quantile(ratios, 0.5),
            Quantile(ratios, 0.1), Quantile(ratios, 0.9), static_cast<int64_t>(ratios.size())};
}

Measurement MeasureTime(const Sides &sides)
{
    Rounds rounds(sides);
    const double start = Now(CLOCK_MONOTONIC);
    rounds.Run(true);
    const double round = Now(CLOCK_MONOTONIC) - start;
    rounds.Forget();
    const auto count = static_cast<int64_t>(std::clamp(kTimeForAWork / round, kFewestRounds, kMostRounds));
    for (int64_t i = 0; i < count; ++i)
        rounds.Run(i % 2 == 0);
    return rounds.Result();
}

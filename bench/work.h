// A piece of work that is measured: the library's way of doing it, and the floor beside it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bench/outcomes.h"

/// One way of doing a work, any number of times. Used on the main thread, with an autorelease pool.
class Side {
public:
    virtual ~Side() = default;
    /// Makes room for the outcomes of this number of runs.
    virtual void Prepare(int64_t times) = 0;
    /// Does the work this number of times and keeps the outcomes. Only this is timed.
    virtual void Run(int64_t times) = 0;
    /// Gives the outcomes back.
    virtual void GiveBack() = 0;
    /// Does the work once and returns its outcome as text.
    virtual std::string Outcome() = 0;
};

template <typename Do>
class SideOf final : public Side {
public:
    explicit SideOf(Do run) : do_(std::move(run)) {}

    void Prepare(int64_t times) override { results_.assign(static_cast<size_t>(times), Result()); }

    void Run(int64_t times) override
    {
        for (int64_t i = 0; i < times; ++i)
            results_[static_cast<size_t>(i)] = do_();
    }

    void GiveBack() override
    {
        for (const Result &result : results_)
            ::GiveBack(result);
        results_.clear();
    }

    std::string Outcome() override
    {
        const Result result = do_();
        std::string text = TextOf(result);
        ::GiveBack(result);
        return text;
    }

private:
    using Result = std::invoke_result_t<Do>;

    Do do_;
    std::vector<Result> results_;
};

/// Both sides, with the inputs that they share.
struct Sides {
    std::unique_ptr<Side> ours;
    std::unique_ptr<Side> floor;
    /// By what one run of each side is divided.
    int64_t oursElements = 1;
    int64_t floorElements = 1;
};

template <typename Ours, typename Floor>
Sides MakeSides(Ours ours, Floor floor)
{
    return {std::make_unique<SideOf<Ours>>(std::move(ours)),
            std::make_unique<SideOf<Floor>>(std::move(floor))};
}

enum class Quantity {
    /// Of the processor, for one run or element.
    Nanoseconds,
    /// Allocated at the peak of one run.
    Bytes,
    /// Nanoseconds in a process of its own, which has no sides.
    FreshProcess,
};

struct Work {
    std::string name;
    /// Makes the inputs. Called when the host has the library's classes.
    std::function<Sides()> make;
    /// The largest acceptable ratio; 0 without a target.
    double target = 0;
    Quantity quantity = Quantity::Nanoseconds;
    /// What stands in the floor's place.
    std::string against = "floor";
    /// Too large for a host that keeps accounts.
    bool large = false;
};

// One function for each file of works.
void AddArrayWorks(std::vector<Work> &works);
void AddBlockWorks(std::vector<Work> &works);
void AddClassRowWorks(std::vector<Work> &works);
void AddDateWorks(std::vector<Work> &works);
void AddDeliveryWorks(std::vector<Work> &works);
void AddDictionaryWorks(std::vector<Work> &works);
void AddLoadWorks(std::vector<Work> &works);
void AddNotificationWorks(std::vector<Work> &works);
void AddScalarWorks(std::vector<Work> &works);
void AddStringWorks(std::vector<Work> &works);
void AddTreeWorks(std::vector<Work> &works);
void AddWrapperWorks(std::vector<Work> &works);

/// Every work, in the order of the report.
std::vector<Work> AllWorks();

// Adds the works of one kind of input.
#include "bench/sized_works.h"

namespace {

constexpr int64_t kSmall = 100;
constexpr int64_t kSizeWithTarget = 1'000;
constexpr int64_t kLargestForAccounts = 10'000;
constexpr int64_t kSizeForMemory = 100'000;
constexpr double kTarget = 1.10;

/// One side of a work with a large input, and the same side with a small one.
Sides Growth(Sides large, int64_t largeSize, Sides small, std::unique_ptr<Side> Sides::*side)
{
    return {std::move(large.*side), std::move(small.*side), largeSize, kSmall};
}

Work GrowthWork(const SizedWorks &sized, const std::string &name, std::unique_ptr<Side> Sides::*side)
{
    Work work;
    work.name = sized.name + name;
    work.make = [make = sized.make, size = sized.largest, side] {
        return Growth(make(size), size, make(kSmall), side);
    };
    work.against = "input of 100";
    return work;
}

} // namespace

void AddSizedWorks(std::vector<Work> &works, const SizedWorks &sized)
{
    for (int64_t size = sized.smallest; size <= sized.largest; size *= 10) {
        Work work{sized.name + "/" + std::to_string(size), [make = sized.make, size] { return make(size); }};
        work.target = size == kSizeWithTarget ? kTarget : 0;
        work.large = size > kLargestForAccounts;
        works.push_back(work);
    }
    Work growth = GrowthWork(sized, "/growth", &Sides::ours);
    growth.target = sized.growthTarget;
    works.push_back(growth);
    works.push_back(GrowthWork(sized, "/growth_of_floor", &Sides::floor));

    Work memory{sized.name + "/memory", [make = sized.make] { return make(kSizeForMemory); }, kTarget,
                Quantity::Bytes};
    memory.large = true;
    works.push_back(memory);
}

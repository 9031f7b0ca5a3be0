// Works with inputs of any size: each size, what an element costs in a large one against a small one, memory.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/work.h"

struct SizedWorks {
    std::string name;
    /// Makes both sides with an input of so many elements.
    std::function<Sides(int64_t size)> make;
    /// From the smallest to the largest, by tens.
    int64_t smallest;
    int64_t largest;
    /// For the growth of the cost of an element; 0 where there is none.
    double growthTarget;
};

void AddSizedWorks(std::vector<Work> &works, const SizedWorks &sized);

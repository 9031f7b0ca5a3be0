// The steps of the conversion to the host by the names of their classes: a table that the compiler makes.
#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <iterator>

#include "bridge/to_host/conversion_steps.h"

constexpr size_t LengthOf(const char *text)
{
    size_t length = 0;
    while (text[length] != '\0')
        ++length;
    return length;
}

/// The steps by the hash of their class's name. A name that is too short for a hash has no step. Of two steps
/// with the same slot, the later one is in the next free slot.
class StepNames {
public:
    constexpr StepNames()
    {
        for (const ConversionStep &step : kConversionSteps) {
            if (step.object != nullptr)
                continue;
            size_t slot = SlotOf(step.name, LengthOf(step.name));
            while (steps_[slot] != nullptr)
                slot = (slot + 1) % kSlots;
            steps_[slot] = &step;
            begins_[static_cast<unsigned char>(step.name[0])] = true;
        }
    }

    /// Null for a class that has no step.
    const ConversionStep *Find(const char *name) const
    {
        if (!begins_[static_cast<unsigned char>(name[0])])
            return nullptr;
        const size_t length = std::strlen(name);
        if (length < kShortestName)
            return nullptr;
        size_t slot = SlotOf(name, length);
        while (steps_[slot] != nullptr && std::strcmp(steps_[slot]->name, name) != 0)
            slot = (slot + 1) % kSlots;
        return steps_[slot];
    }

private:
    static constexpr size_t kSlots = 512;
    static constexpr size_t kShortestName = 5;
    static_assert(std::size(kConversionSteps) < kSlots / 4);

    static constexpr size_t SlotOf(const char *name, size_t length)
    {
        const auto letter = [&](size_t index) -> size_t { return static_cast<unsigned char>(name[index]); };
        return (length * 67 + letter(2) * 5 + letter(4) * 29 + letter(length / 2) * 13 +
                letter(length - 2) * 3 + letter(length - 1)) %
               kSlots;
    }

    std::array<const ConversionStep *, kSlots> steps_ = {};
    std::array<bool, UCHAR_MAX + 1> begins_ = {};
};

inline constexpr StepNames kStepNames;

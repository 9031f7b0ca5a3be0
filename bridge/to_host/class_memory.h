// Remembers what was found out about a class, for conversions that go by the class alone.
#pragma once

#include <objc/objc.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

/// A small number for each of the classes that were remembered last. Any thread, without a lock: class and
/// number share one word, so that a number is never another class's. Classes that share a slot take it from
/// each other.
class ClassMemory {
public:
    static constexpr size_t kMostNumbers = UINT16_MAX;

    std::optional<size_t> Find(Class type) const
    {
        const uint64_t word = slots_[SlotOf(type)].load(std::memory_order_relaxed);
        if ((word & kClassMask) != reinterpret_cast<uint64_t>(type))
            return std::nullopt;
        return word >> kNumberShift;
    }

    void Remember(Class type, size_t number)
    {
        const auto address = reinterpret_cast<uint64_t>(type);
        if ((address & ~kClassMask) == 0 && number <= kMostNumbers)
            slots_[SlotOf(type)].store(address | static_cast<uint64_t>(number) << kNumberShift,
                                       std::memory_order_relaxed);
    }

private:
    static constexpr unsigned kSlotBits = 10;
    /// Addresses of programs have 47 bits.
    static constexpr unsigned kNumberShift = 48;
    static constexpr uint64_t kClassMask = (uint64_t{1} << kNumberShift) - 1;

    static size_t SlotOf(Class type)
    {
        constexpr uint64_t kSpread = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
        return (reinterpret_cast<uint64_t>(type) * kSpread) >> (64 - kSlotBits);
    }

    std::atomic<uint64_t> slots_[size_t{1} << kSlotBits] = {};
};

// How code of each processor is unwound: its rules at a call, and what its compact rules stand for.
#pragma once

#include <span>
#include <vector>

#include "platform/macho/image.h"

namespace macho {

struct Unwinding {
    /// DWARF's number of the register, or of the column, that has the return address.
    uint8_t returnAddress;
    /// DWARF instructions for the rules at a call.
    std::span<const uint8_t> rulesAtCall;
    /// The mode of compact rules whose lower 24 bits are the offset of a DWARF entry.
    uint32_t dwarfMode;
    /// DWARF instructions for the compact rules of the function at an address of the image. Throws LoadError.
    std::vector<uint8_t> (*rules)(const Image &image, uint64_t function, uint32_t compact);
};

extern const Unwinding kUnwindingX86_64, kUnwindingArm64;

inline const Unwinding &UnwindingFor(Processor processor)
{
    return processor == Processor::X86_64 ? kUnwindingX86_64 : kUnwindingArm64;
}

/// The bits of compact rules that say how the others are to be read.
inline constexpr uint32_t kCompactMode = 0x0F000000;

/// `count` bits of compact rules from bit `first` on.
inline uint32_t CompactField(uint32_t compact, unsigned first, unsigned count)
{
    return (compact >> first) & ((1U << count) - 1);
}

/// Throws LoadError for compact rules that are not known.
[[noreturn]] inline void FailCompact(const std::string &reason)
{
    throw LoadError("__unwind_info: " + reason);
}

} // namespace macho

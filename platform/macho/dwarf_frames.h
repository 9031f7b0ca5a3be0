// DWARF call-frame information: reads entries of the section __eh_frame.
#pragma once

#include <vector>

#include "platform/macho/image.h"

namespace macho {

/// How one function is unwound, as DWARF says it. The instructions start from the processor's rules at a
/// call.
struct UnwindEntry {
    uint64_t begin = 0, end = 0;
    /// Where the address of the function's personality routine is, and where its table of handlers is; 0 for
    /// none.
    uint64_t personalitySlot = 0, handlerTable = 0;
    /// DWARF call-frame instructions, for a code alignment of 1 and a data alignment of -8.
    std::vector<uint8_t> instructions;
};

/// The entry (FDE) at this offset of the section __eh_frame, its begin and end included. Throws LoadError.
UnwindEntry ReadDwarfEntry(const Image &image, uint64_t offset);

} // namespace macho

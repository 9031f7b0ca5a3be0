// How the functions of an image are unwound.
#pragma once

#include <vector>

#include "platform/macho/image.h"

namespace macho {

/// One function, in DWARF's words. Its rules begin at a call: the frame's address is rsp + 8, and the return
/// address lies right below.
struct UnwindEntry {
    uint64_t begin = 0, end = 0;
    /// Where the address of its personality routine stands, and where its table of handlers is; 0 for none.
    uint64_t personalitySlot = 0, handlerTable = 0;
    /// DWARF call-frame instructions, for a code alignment of 1 and a data alignment of -8.
    std::vector<uint8_t> instructions;
};

/// Of each function that the compact table has rules for; where that refers to a DWARF entry, its. Throws
/// LoadError.
std::vector<UnwindEntry> ReadUnwindInfo(const Image &image);

} // namespace macho

// DWARF call-frame information: reads an entry, and names what entries are written with.
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

namespace dwarf {
/// OffsetOf holds the number of the register in its lower six bits; larger numbers want OffsetExtended.
inline constexpr uint8_t OffsetOf = 0x80, OffsetExtended = 0x05, DefineCfa = 0x0C, DefineCfaOffset = 0x0E;
inline constexpr int DataAlignment = -8;
} // namespace dwarf

void AppendUnsignedLeb(std::vector<uint8_t> &bytes, uint64_t value);
void AppendSignedLeb(std::vector<uint8_t> &bytes, int64_t value);
/// Appends the instruction that the register was saved `wordsBelow` words below the frame's address.
void AppendSaved(std::vector<uint8_t> &instructions, unsigned registerNumber, uint64_t wordsBelow);

/// The entry (FDE) at this offset of the section __eh_frame, its begin and end included. Throws LoadError.
UnwindEntry ReadDwarfEntry(const Image &image, uint64_t offset);

} // namespace macho

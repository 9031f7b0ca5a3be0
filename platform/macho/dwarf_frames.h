// DWARF call-frame information: reading one entry, and the words it is written in.
#pragma once

#include "platform/macho/unwind_info.h"

namespace macho {

namespace dwarf {
inline constexpr uint8_t OffsetOf = 0x80, DefineCfa = 0x0C, DefineCfaOffset = 0x0E;
inline constexpr uint8_t Rbx = 3, Rbp = 6, Rsp = 7, R12 = 12, R13 = 13, R14 = 14, R15 = 15,
                         ReturnAddress = 16;
inline constexpr int DataAlignment = -8;
} // namespace dwarf

void AppendUnsignedLeb(std::vector<uint8_t> &bytes, uint64_t value);
void AppendSignedLeb(std::vector<uint8_t> &bytes, int64_t value);

/// The entry (FDE) at this offset of the section __eh_frame, its begin and end included. Throws LoadError.
UnwindEntry ReadDwarfEntry(const Image &image, uint64_t offset);

} // namespace macho

// DWARF call-frame instructions: their names, and what they are written with.
#pragma once

#include <cstdint>
#include <vector>

namespace macho {

namespace dwarf {
/// OffsetOf holds the number of the register in its lower six bits; larger numbers want OffsetExtended.
inline constexpr uint8_t OffsetOf = 0x80, OffsetExtended = 0x05, DefineCfa = 0x0C, DefineCfaOffset = 0x0E;
inline constexpr int DataAlignment = -8;
} // namespace dwarf

void AppendUnsignedLeb(std::vector<uint8_t> &bytes, uint64_t value);
void AppendSignedLeb(std::vector<uint8_t> &bytes, int64_t value);
/// Appends the instruction that the register was saved `wordsBelow` words below the frame's address.
void AppendSaved(std::vector<uint8_t> &instructions, unsigned registerNumber, uint64_t wordsBelow);

} // namespace macho

// Writes DWARF call-frame instructions.
#include "platform/macho/dwarf_instructions.h"

namespace macho {

void AppendUnsignedLeb(std::vector<uint8_t> &bytes, uint64_t value)
{
    do {
        const uint8_t low = value & 0x7F;
        value >>= 7;
        bytes.push_back(value == 0 ? low : low | 0x80);
    } while (value != 0);
}

void AppendSignedLeb(std::vector<uint8_t> &bytes, int64_t value)
{
    for (;;) {
        const uint8_t low = value & 0x7F;
        value >>= 7;
        if ((value == 0 && (low & 0x40) == 0) || (value == -1 && (low & 0x40) != 0)) {
            bytes.push_back(low);
            return;
        }
        bytes.push_back(low | 0x80);
    }
}

void AppendSaved(std::vector<uint8_t> &instructions, unsigned registerNumber, uint64_t wordsBelow)
{
    if (registerNumber < 0x40) {
        instructions.push_back(static_cast<uint8_t>(dwarf::OffsetOf | registerNumber));
    } else {
        instructions.push_back(dwarf::OffsetExtended);
        AppendUnsignedLeb(instructions, registerNumber);
    }
    AppendUnsignedLeb(instructions, wordsBelow);
}

} // namespace macho

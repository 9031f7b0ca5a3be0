// Single-byte encodings that extend ASCII.
#include "platform/gnustep/byte_codec.h"

#include <algorithm>

namespace cocoaport {

ByteCodec::ByteCodec(const HighHalf &characters)
{
    std::copy(std::begin(characters), std::end(characters), highHalf_);
    for (unsigned index = 0; index < std::size(highHalf_); ++index)
        if (highHalf_[index] != kNoCharacter)
            byteOfCharacter_.emplace(highHalf_[index], static_cast<UInt8>(0x80 + index));
}

bool ByteCodec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    char16_t *const units = text.Reserve(count);
    for (size_t index = 0; index < count; ++index) {
        units[index] = bytes[index] < 0x80 ? bytes[index] : highHalf_[bytes[index] - 0x80];
        if (units[index] == kNoCharacter)
            return false;
    }
    text.SetSize(count);
    return true;
}

bool ByteCodec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    for (size_t index = 0; index < count; ++index) {
        UInt8 byte = static_cast<UInt8>(units[index]);
        if (units[index] >= 0x80) {
            const auto entry = byteOfCharacter_.find(units[index]);
            if (entry == byteOfCharacter_.end())
                return false;
            byte = entry->second;
        }
        if (!bytes.Append(&byte, 1))
            return false;
    }
    return true;
}

bool ASCIICodec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    std::copy(bytes, bytes + count, text.Reserve(count));
    text.SetSize(count);
    return true;
}

bool ASCIICodec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    for (size_t index = 0; index < count; ++index) {
        const UInt8 byte = static_cast<UInt8>(units[index]);
        if (units[index] >= 0x80 || !bytes.Append(&byte, 1))
            return false;
    }
    return true;
}

// clang-format off
const HighHalf kNextStepLatin = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, // 80
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF, // 88
    0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, // 90
    0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, // 98
    0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192, 0x00A7, // A0
    0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, // A8
    0x00AE, 0x2013, 0x2020, 0x2021, 0x00B7, 0x00A6, 0x00B6, 0x2022, // B0
    0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, // B8
    0x00B9, 0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, // C0
    0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD, 0x02DB, 0x02C7, // C8
    0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, // D0
    0x00E3, 0x00E4, 0x00E5, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, // D8
    0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1, // E0
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, // E8
    0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB, 0x0131, 0x00FC, 0x00FD, // F0
    0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, kNoCharacter, kNoCharacter, // F8
};
// clang-format on

} // namespace cocoaport

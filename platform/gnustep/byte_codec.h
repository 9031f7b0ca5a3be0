// Single-byte encodings that extend ASCII.
#pragma once

#include <unordered_map>

#include "platform/gnustep/text_codec.h"

namespace cocoaport {

/// Stands for a byte without a character.
constexpr char16_t kNoCharacter = 0xFFFF;

/// The characters of the bytes 0x80 to 0xFF.
using HighHalf = char16_t[128];

class ByteCodec : public TextCodec {
public:
    explicit ByteCodec(const HighHalf &characters);
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;
    bool KeepsASCII() const override { return true; }

private:
    HighHalf highHalf_;
    std::unordered_map<char16_t, UInt8> byteOfCharacter_;
};

/// ASCII. Decodes a byte above 0x7F as the Unicode character of that number.
class ASCIICodec : public TextCodec {
public:
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;
    bool KeepsASCII() const override { return true; }
};

/// NextStep Latin, which ICU lacks.
extern const HighHalf kNextStepLatin;

} // namespace cocoaport

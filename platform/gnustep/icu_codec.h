/// Encodings that ICU converts.
#pragma once

#include "byte_codec.h"

namespace cocoaport {

/// How ICU's table has the control characters 1A, 1C and 7F.
enum class Controls {
    kInPlace,
    kRotated, ///< as PC hardware had them: the bytes are the characters 1C, 7F and 1A
};

/// An encoding of several bytes a character, or of another base than ASCII.
class ICUCodec : public TextCodec {
public:
    /// The name is kept; it lives as long as the process.
    ICUCodec(const char *icuName, Controls inTable) : name(icuName), controls(inTable) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    const char *name;
    Controls controls;
};

/// Whether this ICU has the converter.
bool ICUHasConverter(const char *icuName);

/// Asks ICU for the characters of the bytes 0x80 to 0xFF.
void ReadHighHalf(const char *icuName, HighHalf &characters);

} // namespace cocoaport

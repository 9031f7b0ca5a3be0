// Encodings that ICU converts.
#pragma once

#include "platform/gnustep/byte_codec.h"

namespace cocoaport {

/// Where ICU's table has the control characters 1A, 1C and 7F.
enum class Controls {
    InPlace,
    Rotated, ///< as PC hardware had them: the bytes are the characters 1C, 7F and 1A
};

/// An encoding of several bytes a character, or of another base than ASCII.
class ICUCodec : public TextCodec {
public:
    /// Borrows the name, which must live as long as the process.
    ICUCodec(const char *name, Controls controls) : name_(name), controls_(controls) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    const char *name_;
    Controls controls_;
};

/// Whether this ICU has the converter.
bool ICUHasConverter(const char *icuName);

/// Reads ICU's characters of the bytes 0x80 to 0xFF.
void ReadHighHalf(const char *icuName, HighHalf &characters);

} // namespace cocoaport

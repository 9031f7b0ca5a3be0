// UTF-8, UTF-16 and UTF-32.
#pragma once

#include "platform/gnustep/text_codec.h"

namespace cocoaport {

enum class ByteOrder { Host, Swapped };

/// Refuses whatever is not well-formed, and lone surrogates in both directions.
class UTF8Codec : public TextCodec {
public:
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;
    bool KeepsASCII() const override { return true; }
};

/// Takes units as they are, lone surrogates included.
class UTF16Codec : public TextCodec {
public:
    explicit UTF16Codec(ByteOrder order) : order_(order) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    ByteOrder order_;
};

/// Refuses surrogates and code points above U+10FFFF.
class UTF32Codec : public TextCodec {
public:
    explicit UTF32Codec(ByteOrder order) : order_(order) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    ByteOrder order_;
};

} // namespace cocoaport

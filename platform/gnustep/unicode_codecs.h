/// UTF-8, UTF-16 and UTF-32.
#pragma once

#include "text_codec.h"

namespace cocoaport {

enum class ByteOrder { kHost, kSwapped };

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
    explicit UTF16Codec(ByteOrder theOrder) : order(theOrder) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    ByteOrder order;
};

/// Refuses surrogates and code points above U+10FFFF.
class UTF32Codec : public TextCodec {
public:
    explicit UTF32Codec(ByteOrder theOrder) : order(theOrder) {}
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;

private:
    ByteOrder order;
};

} // namespace cocoaport

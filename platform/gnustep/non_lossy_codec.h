// ASCII with escapes for all other characters, as Foundation writes them.
#pragma once

#include "platform/gnustep/text_codec.h"

namespace cocoaport {

class NonLossyASCIICodec : public TextCodec {
public:
    bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const override;
    bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const override;
};

} // namespace cocoaport

// The interface of the codecs, which convert between text and the bytes of an encoding.
#pragma once

#include <CoreFoundation/CFString.h>

#include "platform/gnustep/text_buffers.h"

namespace cocoaport {

/// One encoding. Codecs hold no state, live as long as the process and serve all threads.
class TextCodec {
public:
    virtual ~TextCodec() = default;

    /// Writes the text of the bytes; false if they are not valid.
    virtual bool Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const = 0;

    /// Writes the units' bytes; false if they do not fit or a character has no counterpart. Text is encoded a
    /// block at a time; a surrogate pair is never divided.
    virtual bool Encode(const char16_t *units, size_t count, ByteWriter &bytes) const = 0;

    /// Whether bytes below 0x80 are the ASCII characters, whatever precedes them.
    virtual bool KeepsASCII() const { return false; }
};

} // namespace cocoaport

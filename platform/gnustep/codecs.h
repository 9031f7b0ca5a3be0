// The codecs by Core Foundation's numbers of text encodings.
#pragma once

#include <CoreFoundation/CFString.h>

#include "platform/gnustep/text_codec.h"

namespace cocoaport {

/// The codec of the encoding; null for an unknown number.
const TextCodec *FindCodec(CFStringEncoding encoding);

} // namespace cocoaport

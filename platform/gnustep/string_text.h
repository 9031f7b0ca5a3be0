// Encodes strings block by block, without making Cocoa objects.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>

#include "platform/gnustep/text_codec.h"

namespace cocoaport {

/// Writes the string's bytes; false if they do not fit or a character has no counterpart.
bool EncodeString(NSString *string, const TextCodec &codec, ByteWriter &bytes);

/// The string in UTF-8; none if it has a lone surrogate.
std::optional<std::string> UTF8Text(NSString *string);

} // namespace cocoaport

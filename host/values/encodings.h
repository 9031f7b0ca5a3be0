// Conversions between the encodings of host strings and UTF-16, by Core Foundation's encoding numbers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qzlhost {

/// The text of these bytes; nothing for an unknown encoding or invalid bytes. Lone surrogates in UTF-16 are
/// kept.
std::optional<std::u16string> Decode(std::string_view bytes, uint32_t encoding);

/// As above, but invalid bytes become U+FFFD. Nothing only for an unknown encoding.
std::optional<std::u16string> DecodeLeniently(std::string_view bytes, uint32_t encoding);

/// The bytes of a text; what the encoding cannot express becomes its substitute character. Nothing for an
/// unknown encoding.
std::optional<std::string> Encode(std::u16string_view text, uint32_t encoding);

/// UTF-8 to UTF-16 and back; what is invalid becomes U+FFFD.
std::u16string FromUtf8(std::string_view utf8);
std::string ToUtf8(std::u16string_view text);

} // namespace qzlhost

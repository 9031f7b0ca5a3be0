// Host strings and texts.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <string_view>

#include "host/values/counted.h"

namespace qzlhost {

/// Immutable bytes, and the tag that says how to read them. A null pointer is the empty string.
struct String : Counted {
    String(std::string content, uint32_t tag) : bytes(std::move(content)), encoding(tag) {}

    const std::string bytes;
    std::atomic<uint32_t> encoding;
};

struct Text : Counted {
    explicit Text(std::u16string content) : units(std::move(content)) {}

    const std::u16string units;
};

/// New, with one reference.
String *NewString(std::string bytes, uint32_t encoding);
Text *NewText(std::u16string units);

/// Empty for null.
std::string_view BytesOf(const String *string);
/// 0xFFFF for null.
uint32_t EncodingOf(const String *string);
/// The text in the encoding of the tag; nothing if the bytes are invalid or the tag is not an encoding.
std::optional<std::u16string> TextOf(const String *string);
/// The text in UTF-8, whatever the tag; the bytes themselves if the tag is not an encoding.
std::string Utf8Of(const String *string);
/// Empty for null.
std::string Utf8Of(const Text *text);

/// The bytes in another encoding. Bytes that are tagged 0xFFFF, or are to be, stay as they are. Nothing for
/// an unknown encoding.
std::optional<std::string> ConvertedBytes(const String *string, uint32_t encoding);

/// The beginning of the text in quotation marks, and the serial number.
std::string Describe(const String *string);
std::string Describe(const Text *text);

} // namespace qzlhost

// Texts for tests: as Cocoa strings, as units, as bytes in an encoding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The bytes in another charset, by the C library's converter, which neither the host nor the library uses;
/// nothing if it refuses them. Charsets have the C library's names; "UTF-16LE" is the machine's UTF-16.
std::optional<std::string> Recode(std::string_view bytes, const char *from, const char *to);

/// The text of bytes in a charset, and the bytes of a text; nothing as above.
std::optional<std::u16string> DecodedText(std::string_view bytes, const char *charset);
std::optional<std::string> EncodedText(std::u16string_view text, const char *charset);

/// The text that many times over.
template <typename Unit>
std::basic_string<Unit> Repeated(const std::basic_string<Unit> &text, size_t count)
{
    std::basic_string<Unit> repeated;
    repeated.reserve(text.size() * count);
    for (; count > 0; --count)
        repeated += text;
    return repeated;
}

/// The bytes of units in the machine's order, borrowed.
template <typename Unit>
std::string_view BytesOfUnits(const std::basic_string<Unit> &units)
{
    return {reinterpret_cast<const char *>(units.data()), units.size() * sizeof(Unit)};
}

#ifdef __OBJC__
@class NSString;

/// An autoreleased Cocoa string of these units.
NSString *CocoaString(std::u16string_view units);

std::u16string UnitsOf(NSString *string);
#endif

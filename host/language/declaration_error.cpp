// The error for a malformed declaration.
#include "host/language/declaration_error.h"

#include <string>

namespace qzlhost {

namespace {

/// A text as messages quote it: at most 100 bytes of whole characters, with control characters escaped.
std::string Shown(std::string_view text)
{
    constexpr size_t kLongest = 100;
    constexpr char kHex[] = "0123456789ABCDEF";
    size_t length = text.size();
    if (length > kLongest) {
        length = kLongest;
        while (length > 0 && IsContinuation(text[length]))
            --length;
    }
    std::string shown;
    for (const char c : text.substr(0, length)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F)
            shown += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
        else
            shown += c;
    }
    return length < text.size() ? shown + "..." : shown;
}

} // namespace

DeclarationError::DeclarationError(std::string_view text, size_t offset, std::string_view expected,
                                   std::string_view found)
    : std::runtime_error("\"" + Shown(text) + "\" is no declaration: expected " + std::string(expected) +
                         " at position " + std::to_string(offset + 1) + ", found " +
                         (found.empty() ? "the end" : "\"" + Shown(found) + "\""))
{
}

} // namespace qzlhost

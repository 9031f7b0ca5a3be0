// The error for a malformed declaration.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace qzlhost {

class DeclarationError : public std::runtime_error {
public:
    /// what() quotes the text and says what was expected at `offset` and what was found there.
    DeclarationError(std::string_view text, size_t offset, std::string_view expected, std::string_view found);
};

/// Whether a byte of UTF-8 continues a character that an earlier byte began.
inline bool IsContinuation(char c)
{
    return (c & 0xC0) == 0x80;
}

} // namespace qzlhost

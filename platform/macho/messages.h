// What the loader says about a file that it refuses.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace macho {

/// The text with each byte of a control character, and each that is not of UTF-8, in the form \x1b. A text
/// without such bytes stays as it is.
std::string Printable(std::string_view text);

/// The number in the form 0x1f0.
std::string Hex(uint64_t number);

/// A file that cannot be loaded: what is wrong and where. Names in the text may come from the file, so the
/// text is made printable.
class LoadError : public std::runtime_error {
public:
    explicit LoadError(const std::string &text) : std::runtime_error(Printable(text)) {}
};

} // namespace macho

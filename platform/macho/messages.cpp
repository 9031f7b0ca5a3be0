// What the loader says about a file that it refuses.
#include "platform/macho/messages.h"

#include <cstdio>

namespace macho {

namespace {

/// The size of the UTF-8 character that the text begins with; 0 for a control character, and for bytes that
/// are none.
size_t PrintableSize(std::string_view text)
{
    const auto first = static_cast<uint8_t>(text.front());
    if (first < 0x80)
        return first >= 0x20 && first != 0x7F ? 1 : 0;
    const size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC0 || first > 0xF4 || text.size() < size)
        return 0;
    uint32_t character = first & (0x7FU >> size);
    for (size_t i = 1; i < size; ++i) {
        const auto byte = static_cast<uint8_t>(text[i]);
        if ((byte & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (byte & 0x3F);
    }
    // The control characters of two bytes end before 0xA0.
    constexpr uint32_t kLeastOfSize[] = {0, 0, 0xA0, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character >= kLeastOfSize[size] && character <= 0x10FFFF && !isSurrogate ? size : 0;
}

} // namespace

std::string Printable(std::string_view text)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string printable;
    while (!text.empty()) {
        const size_t size = PrintableSize(text);
        if (size == 0) {
            const auto byte = static_cast<uint8_t>(text.front());
            printable.append({'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]});
        }
        printable += text.substr(0, size);
        text.remove_prefix(size == 0 ? 1 : size);
    }
    return printable;
}

std::string Hex(uint64_t number)
{
    char text[19];
    snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(number));
    return text;
}

} // namespace macho

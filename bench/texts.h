// Texts that works convert.
#pragma once

#include <cstdint>
#include <string>

/// UTF-8 of so many UTF-16 units.
inline std::string AsciiText(int64_t units)
{
    std::string text;
    for (int64_t i = 0; i < units; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

/// The same of letters that take two or three bytes in UTF-8.
inline std::string OtherText(int64_t units)
{
    constexpr const char *kLetters[] = {"\u00e4", "\u03bb", "\u0436", "\u65e5"};
    std::string text;
    for (int64_t i = 0; i < units; ++i)
        text += kLetters[i % 4];
    return text;
}

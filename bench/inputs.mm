// Makes values that works convert.
#include "bench/inputs.h"

std::string AsciiText(int64_t units)
{
    std::string text;
    for (int64_t i = 0; i < units; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

std::string OtherText(int64_t units)
{
    constexpr const char *kLetters[] = {"\u00e4", "\u03bb", "\u0436", "\u65e5"};
    std::string text;
    for (int64_t i = 0; i < units; ++i)
        text += kLetters[i % 4];
    return text;
}

NSString *CocoaString(const std::string &utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}

// Texts for tests: converts them with the C library and with Cocoa.
#include "tests/support/texts.h"

#import <Foundation/Foundation.h>
#include <iconv.h>

#include <cstring>

std::optional<std::string> Recode(std::string_view bytes, const char *from, const char *to)
{
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1))
        return std::nullopt;
    std::string input(bytes);
    std::string output(bytes.size() * 4 + 16, '\0');
    char *next = input.data();
    size_t left = input.size();
    char *end = output.data();
    size_t room = output.size();
    const size_t failed = static_cast<size_t>(-1);
    const bool converted = iconv(converter, &next, &left, &end, &room) != failed &&
                           iconv(converter, nullptr, nullptr, &end, &room) != failed;
    iconv_close(converter);
    output.resize(output.size() - room);
    return converted ? std::optional(output) : std::nullopt;
}

std::optional<std::u16string> DecodedText(std::string_view bytes, const char *charset)
{
    const std::optional<std::string> recoded = Recode(bytes, charset, "UTF-16LE");
    if (!recoded)
        return std::nullopt;
    std::u16string text(recoded->size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), recoded->data(), recoded->size());
    return text;
}

std::optional<std::string> EncodedText(std::u16string_view text, const char *charset)
{
    return Recode(BytesOfUnits(std::u16string(text)), "UTF-16LE", charset);
}

NSString *CocoaString(std::u16string_view units)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(units.data())
                                   length:units.size()];
}

std::u16string UnitsOf(NSString *string)
{
    std::u16string units([string length], u'\0');
    [string getCharacters:reinterpret_cast<unichar *>(units.data()) range:NSMakeRange(0, units.size())];
    return units;
}

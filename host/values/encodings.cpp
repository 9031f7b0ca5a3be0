// Conversions between the encodings of host strings and UTF-16, by Core Foundation's encoding numbers.
#include "host/values/encodings.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <memory>

#include <unicode/ucnv.h>

#include "host/values/codes.h"

namespace qzlhost {

namespace {

struct EncodingRow {
    uint32_t number;
    const char *converter;
};

constexpr EncodingRow kEncodings[] = {
    {0x0000, "macos-0_2-10.2"}, {0x0007, "x-mac-cyrillic"}, {0x001D, "x-mac-centraleurroman"},
    {0x0006, "x-mac-greek"},    {0x0023, "x-mac-turkish"},  {0x0100, "UTF-16LE"},
    {0x10000100, "UTF-16BE"},   {0x14000100, "UTF-16LE"},   {0x0C000100, "UTF-32LE"},
    {0x18000100, "UTF-32BE"},   {0x1C000100, "UTF-32LE"},   {0x04000100, "UTF-7"},
    {0x08000100, "UTF-8"},      {0x0201, "ISO-8859-1"},     {0x0202, "ISO-8859-2"},
    {0x0203, "ISO-8859-3"},     {0x0204, "ISO-8859-4"},     {0x0205, "ISO-8859-5"},
    {0x0206, "ISO-8859-6"},     {0x0207, "ISO-8859-7"},     {0x0208, "ISO-8859-8"},
    {0x0209, "ISO-8859-9"},     {0x020A, "ISO-8859-10"},    {0x020B, "ISO-8859-11"},
    {0x020D, "ISO-8859-13"},    {0x020E, "ISO-8859-14"},    {0x020F, "ISO-8859-15"},
    {0x0400, "ibm-437"},        {0x0410, "ibm-850"},        {0x0500, "windows-1252"},
    {0x0501, "windows-1250"},   {0x0502, "windows-1251"},   {0x0503, "windows-1253"},
    {0x0504, "windows-1254"},   {0x0505, "windows-1255"},   {0x0506, "windows-1256"},
    {0x0507, "windows-1257"},   {0x0508, "windows-1258"},   {0x0600, "US-ASCII"},
    {0x0632, "GB18030"},        {0x0820, "ISO-2022-JP"},    {0x0920, "EUC-JP"},
    {0x0930, "EUC-CN"},         {0x0940, "EUC-KR"},         {0x0A01, "Shift_JIS"},
    {0x0A02, "KOI8-R"},         {0x0A03, "Big5"},
};

const char *ConverterName(uint32_t encoding)
{
    const auto *const row = std::find_if(std::begin(kEncodings), std::end(kEncodings),
                                         [&](const EncodingRow &each) { return each.number == encoding; });
    return row == std::end(kEncodings) ? nullptr : row->converter;
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter OpenConverter(uint32_t encoding)
{
    const char *const name = ConverterName(encoding);
    UErrorCode status = U_ZERO_ERROR;
    return {name ? ucnv_open(name, &status) : nullptr, &ucnv_close};
}

std::optional<std::u16string> DecodeWith(UConverter *converter, std::string_view bytes)
{
    if (!converter || bytes.size() > INT32_MAX / 4)
        return std::nullopt;
    // No encoding here has more than two units for a byte.
    std::u16string text(bytes.size() * 2 + 2, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_toUChars(converter, text.data(), static_cast<int32_t>(text.size()),
                                         bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    text.resize(static_cast<size_t>(length));
    return text;
}

bool IsNativeUtf16(uint32_t encoding)
{
    return encoding == encoding::UTF16 || encoding == 0x14000100;
}

} // namespace

std::optional<std::u16string> Decode(std::string_view bytes, uint32_t encoding)
{
    if (IsNativeUtf16(encoding)) {
        if (bytes.size() % 2 != 0)
            return std::nullopt;
        std::u16string text(bytes.size() / 2, u'\0');
        std::memcpy(text.data(), bytes.data(), bytes.size());
        return text;
    }
    const Converter converter = OpenConverter(encoding);
    if (converter) {
        UErrorCode status = U_ZERO_ERROR;
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    }
    return DecodeWith(converter.get(), bytes);
}

std::optional<std::u16string> DecodeLeniently(std::string_view bytes, uint32_t encoding)
{
    return DecodeWith(OpenConverter(encoding).get(), bytes);
}

std::optional<std::string> Encode(std::u16string_view text, uint32_t encoding)
{
    if (IsNativeUtf16(encoding))
        return std::string(reinterpret_cast<const char *>(text.data()), text.size() * 2);
    const Converter converter = OpenConverter(encoding);
    if (!converter || text.size() > INT32_MAX / 16)
        return std::nullopt;
    std::string bytes(
        static_cast<size_t>(UCNV_GET_MAX_BYTES_FOR_STRING(text.size(), ucnv_getMaxCharSize(converter.get()))),
        '\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_fromUChars(converter.get(), bytes.data(), static_cast<int32_t>(bytes.size()),
                                           text.data(), static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    bytes.resize(static_cast<size_t>(length));
    return bytes;
}

std::u16string FromUtf8(std::string_view utf8)
{
    return DecodeLeniently(utf8, encoding::UTF8).value_or(std::u16string());
}

std::string ToUtf8(std::u16string_view text)
{
    return Encode(text, encoding::UTF8).value_or(std::string());
}

} // namespace qzlhost

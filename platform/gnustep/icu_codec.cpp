// Encodings that ICU converts.
#include "platform/gnustep/icu_codec.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <climits>
#include <iterator>
#include <string>

namespace cocoaport {

namespace {

constexpr size_t kMaximum = INT32_MAX;

using Converter = std::unique_ptr<UConverter, void (*)(UConverter *)>;

/// A converter that stops at what it cannot convert; null if ICU has none of that name.
Converter Open(const char *name)
{
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &error), ucnv_close);
    if (converter != nullptr) {
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
        ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    }
    return converter;
}

constexpr char16_t kControls[] = {0x1A, 0x1C, 0x7F};
constexpr char16_t kRotatedControls[] = {0x1C, 0x7F, 0x1A};

/// The control character of `to` that is in the place of this one of `from`; any other unit as it is.
char16_t Rotate(char16_t unit, const char16_t (&from)[3], const char16_t (&to)[3])
{
    const auto *const control = std::find(std::begin(from), std::end(from), unit);
    return control == std::end(from) ? unit : to[control - from];
}

} // namespace

bool ICUHasConverter(const char *icuName)
{
    return Open(icuName) != nullptr;
}

void ReadHighHalf(const char *icuName, HighHalf &characters)
{
    const Converter converter = Open(icuName);
    for (unsigned index = 0; index < std::size(characters); ++index) {
        const char byte = static_cast<char>(0x80 + index);
        char16_t character = kNoCharacter;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUChars(converter.get(), &character, 1, &byte, 1, &error);
        characters[index] = U_SUCCESS(error) ? character : kNoCharacter;
    }
}

bool ICUCodec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    if (count > kMaximum)
        return false;
    const Converter converter = Open(name_);
    const auto convert = [&](int32_t capacity, UErrorCode &error) {
        return ucnv_toUChars(converter.get(), text.Reserve(static_cast<size_t>(capacity)), capacity,
                             reinterpret_cast<const char *>(bytes), static_cast<int32_t>(count), &error);
    };
    UErrorCode error = U_ZERO_ERROR;
    int32_t written = convert(static_cast<int32_t>(count), error);
    if (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        written = convert(written, error);
    }
    if (U_FAILURE(error))
        return false;
    text.SetSize(static_cast<size_t>(written));
    if (controls_ == Controls::Rotated) {
        std::transform(text.Data(), text.Data() + text.Size(), text.Data(),
                       [](char16_t unit) { return Rotate(unit, kRotatedControls, kControls); });
    }
    return true;
}

bool ICUCodec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    if (count > kMaximum)
        return false;
    std::u16string rotated;
    if (controls_ == Controls::Rotated) {
        std::transform(units, units + count, std::back_inserter(rotated),
                       [](char16_t unit) { return Rotate(unit, kControls, kRotatedControls); });
        units = rotated.data();
    }
    const Converter converter = Open(name_);
    const int32_t room = static_cast<int32_t>(std::min(bytes.Room(), kMaximum));
    UErrorCode error = U_ZERO_ERROR;
    const int32_t written =
        ucnv_fromUChars(converter.get(), bytes.Next(), room, units, static_cast<int32_t>(count), &error);
    if (U_FAILURE(error))
        return false;
    bytes.Advance(static_cast<size_t>(written));
    return true;
}

} // namespace cocoaport

// UTF-8, UTF-16 and UTF-32.
#include "platform/gnustep/unicode_codecs.h"

#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <climits>

namespace cocoaport {

namespace {

/// ICU counts in 32 bits.
constexpr size_t kMaximum = INT32_MAX;

char16_t InOrder(char16_t unit, ByteOrder order)
{
    return order == ByteOrder::Host ? unit : __builtin_bswap16(unit);
}

UInt32 InOrder(UInt32 codePoint, ByteOrder order)
{
    return order == ByteOrder::Host ? codePoint : __builtin_bswap32(codePoint);
}

} // namespace

bool UTF8Codec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    if (count > kMaximum)
        return false;
    int32_t written = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(text.Reserve(count), static_cast<int32_t>(count), &written,
                  reinterpret_cast<const char *>(bytes), static_cast<int32_t>(count), &error);
    text.SetSize(static_cast<size_t>(written));
    return U_SUCCESS(error);
}

bool UTF8Codec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    if (count > kMaximum)
        return false;
    const int32_t room = static_cast<int32_t>(std::min(bytes.Room(), kMaximum));
    int32_t written = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8(bytes.Next(), room, &written, units, static_cast<int32_t>(count), &error);
    if (U_FAILURE(error))
        return false;
    bytes.Advance(static_cast<size_t>(written));
    return true;
}

bool UTF16Codec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    const size_t size = count / sizeof(char16_t);
    char16_t *const units = text.Reserve(size);
    std::copy_n(bytes, size * sizeof(char16_t), reinterpret_cast<UInt8 *>(units));
    for (size_t index = 0; index < size; ++index)
        units[index] = InOrder(units[index], order_);
    text.SetSize(size);
    return true;
}

bool UTF16Codec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    for (size_t index = 0; index < count; ++index) {
        const char16_t unit = InOrder(units[index], order_);
        if (!bytes.Append(&unit, sizeof unit))
            return false;
    }
    return true;
}

bool UTF32Codec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    char16_t *const units = text.Reserve(count / sizeof(UInt32) * U16_MAX_LENGTH);
    size_t size = 0;
    for (size_t offset = 0; count - offset >= sizeof(UInt32); offset += sizeof(UInt32)) {
        UInt32 codePoint = 0;
        std::memcpy(&codePoint, bytes + offset, sizeof codePoint);
        codePoint = InOrder(codePoint, order_);
        if (codePoint > 0x10FFFF || U_IS_SURROGATE(codePoint))
            return false;
        U16_APPEND_UNSAFE(units, size, codePoint);
    }
    text.SetSize(size);
    return true;
}

bool UTF32Codec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    for (size_t index = 0; index < count;) {
        UChar32 codePoint = 0;
        U16_NEXT(units, index, count, codePoint);
        if (U_IS_SURROGATE(codePoint))
            return false;
        const UInt32 ordered = InOrder(static_cast<UInt32>(codePoint), order_);
        if (!bytes.Append(&ordered, sizeof ordered))
            return false;
    }
    return true;
}

} // namespace cocoaport

// Core Foundation strings, which are NSStrings.
#include <unicode/unorm2.h>

#include <algorithm>

#include "platform/gnustep/codecs.h"
#include "platform/gnustep/objects.h"
#include "platform/gnustep/string_text.h"
#include "platform/gnustep/string_units.h"

using namespace cocoaport;

namespace {

struct EncodedBytes {
    const UInt8 *bytes;
    size_t count;
    CFStringEncoding encoding;
};

struct ByteOrderMark {
    CFStringEncoding encoding;
    CFStringEncoding order;
    size_t size;
    UInt8 bytes[4];
};

constexpr ByteOrderMark kByteOrderMarks[] = {
    {kCFStringEncodingUTF8, kCFStringEncodingUTF8, 3, {0xEF, 0xBB, 0xBF}},
    {kCFStringEncodingUTF16, kCFStringEncodingUTF16BE, 2, {0xFE, 0xFF}},
    {kCFStringEncodingUTF16, kCFStringEncodingUTF16LE, 2, {0xFF, 0xFE}},
    {kCFStringEncodingUTF32, kCFStringEncodingUTF32BE, 4, {0x00, 0x00, 0xFE, 0xFF}},
    {kCFStringEncodingUTF32, kCFStringEncodingUTF32LE, 4, {0xFF, 0xFE, 0x00, 0x00}},
};

/// The text without its byte-order mark, in the encoding that names its byte order.
EncodedBytes WithoutByteOrderMark(EncodedBytes text)
{
    for (const ByteOrderMark &mark : kByteOrderMarks)
        if (mark.encoding == text.encoding && text.count >= mark.size &&
            std::equal(mark.bytes, mark.bytes + mark.size, text.bytes))
            return {text.bytes + mark.size, text.count - mark.size, mark.order};
    if (text.encoding == kCFStringEncodingUTF16)
        text.encoding = kCFStringEncodingUTF16BE;
    if (text.encoding == kCFStringEncodingUTF32)
        text.encoding = kCFStringEncodingUTF32BE;
    return text;
}

bool IsASCII(const EncodedBytes &text)
{
    UInt8 bits = 0;
    for (size_t index = 0; index < text.count; ++index)
        bits |= text.bytes[index];
    return bits < 0x80;
}

/// The string of the bytes, owned by the caller; nil if they are not valid.
NSString *NewDecodedString(const EncodedBytes &text)
{
    const TextCodec *const codec = FindCodec(text.encoding);
    if (codec == nullptr)
        return nil;
    if (codec->KeepsASCII() && IsASCII(text))
        return [[NSString alloc] initWithBytes:text.bytes length:text.count encoding:NSASCIIStringEncoding];
    UnitBuffer units;
    if (!codec->Decode(text.bytes, text.count, units))
        return nil;
    return NewString(units.Data(), units.Size());
}

const UNormalizer2 *Normalizer(CFStringNormalizationForm form, UErrorCode &error)
{
    switch (form) {
    case kCFStringNormalizationFormD:
        return unorm2_getNFDInstance(&error);
    case kCFStringNormalizationFormKD:
        return unorm2_getNFKDInstance(&error);
    case kCFStringNormalizationFormC:
        return unorm2_getNFCInstance(&error);
    case kCFStringNormalizationFormKC:
        return unorm2_getNFKCInstance(&error);
    }
    error = U_ILLEGAL_ARGUMENT_ERROR;
    return nullptr;
}

std::u16string Units(NSString *string)
{
    std::u16string units([string length], u'\0');
    [string getCharacters:reinterpret_cast<unichar *>(units.data()) range:NSMakeRange(0, units.size())];
    return units;
}

} // namespace

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8 *bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation)
{
    if (numBytes < 0 || (bytes == nullptr && numBytes != 0))
        return nullptr;
    const EncodedBytes text{bytes, static_cast<size_t>(numBytes), encoding};
    return ReferenceOf<CFStringRef>(
        NewDecodedString(isExternalRepresentation ? WithoutByteOrderMark(text) : text));
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char *cString,
                                      CFStringEncoding encoding)
{
    if (cString == nullptr)
        return nullptr;
    return CFStringCreateWithBytes(allocator, reinterpret_cast<const UInt8 *>(cString),
                                   static_cast<CFIndex>(std::strlen(cString)), encoding, false);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *chars, CFIndex numChars)
{
    if (numChars < 0 || (chars == nullptr && numChars != 0))
        return nullptr;
    return ReferenceOf<CFStringRef>(
        NewString(reinterpret_cast<const char16_t *>(chars), static_cast<size_t>(numChars)));
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef string)
{
    if (string == nullptr)
        return nullptr;
    NSMutableString *const copy = [[NSMutableString alloc] init];
    [copy setString:ObjectOf<NSString>(string)];
    return ReferenceOf<CFMutableStringRef>(copy);
}

void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form)
{
    NSMutableString *const text = ObjectOf<NSMutableString>(string);
    const std::u16string units = Units(text);
    if (units.size() > INT32_MAX)
        return;
    const int32_t length = static_cast<int32_t>(units.size());

    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2 *const normalizer = Normalizer(form, error);
    const int32_t needed = unorm2_normalize(normalizer, units.data(), length, nullptr, 0, &error);
    if (error != U_BUFFER_OVERFLOW_ERROR)
        return;
    error = U_ZERO_ERROR;
    std::u16string normalized(static_cast<size_t>(needed), u'\0');
    unorm2_normalize(normalizer, units.data(), length, normalized.data(), needed, &error);
    if (U_SUCCESS(error))
        SetUnits(text, normalized.data(), normalized.size());
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return static_cast<CFIndex>([ObjectOf<NSString>(string) length]);
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *buffer)
{
    const CFIndex length = CFStringGetLength(string);
    if (buffer == nullptr || range.location < 0 || range.location >= length || range.length <= 0)
        return;
    const CFIndex count = std::min(range.length, length - range.location);
    [ObjectOf<NSString>(string)
        getCharacters:buffer
                range:NSMakeRange(static_cast<NSUInteger>(range.location), static_cast<NSUInteger>(count))];
}

Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex bufferSize, CFStringEncoding encoding)
{
    if (string == nullptr || buffer == nullptr || bufferSize <= 0)
        return false;
    const TextCodec *const codec = FindCodec(encoding);
    ByteWriter bytes(buffer, static_cast<size_t>(bufferSize) - 1);
    const bool converted = codec != nullptr && EncodeString(ObjectOf<NSString>(string), *codec, bytes);
    *(converted ? bytes.Next() : buffer) = '\0';
    return converted;
}

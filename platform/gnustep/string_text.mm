// Encodes strings block by block.
#include "platform/gnustep/string_text.h"

#include <unicode/utf16.h>

#include <algorithm>

#include "platform/gnustep/codecs.h"

namespace cocoaport {

bool EncodeString(NSString *string, const TextCodec &codec, ByteWriter &bytes)
{
    constexpr NSUInteger kBlock = 512;
    char16_t block[kBlock];

    const NSUInteger length = [string length];
    for (NSUInteger position = 0; position < length;) {
        NSUInteger count = std::min(kBlock, length - position);
        [string getCharacters:reinterpret_cast<unichar *>(block) range:NSMakeRange(position, count)];
        const bool endsInsidePair = position + count < length && U16_IS_LEAD(block[count - 1]);
        if (endsInsidePair)
            --count;
        if (!codec.Encode(block, count, bytes))
            return false;
        position += count;
    }
    return true;
}

std::optional<std::string> UTF8Text(NSString *string)
{
    constexpr size_t kBytesPerUnit = 3;
    std::string text([string length] * kBytesPerUnit, '\0');
    ByteWriter bytes(text.data(), text.size());
    if (!EncodeString(string, *FindCodec(kCFStringEncodingUTF8), bytes))
        return std::nullopt;
    text.resize(text.size() - bytes.Room());
    return text;
}

} // namespace cocoaport

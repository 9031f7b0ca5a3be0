// ASCII with escapes for all other characters, as Foundation writes them.
#include "platform/gnustep/non_lossy_codec.h"

#include "platform/gnustep/string_units.h"

namespace cocoaport {

bool NonLossyASCIICodec::Decode(const UInt8 *bytes, size_t count, UnitBuffer &text) const
{
    NSString *const string = [[NSString alloc] initWithBytes:bytes
                                                      length:count
                                                    encoding:NSNonLossyASCIIStringEncoding];
    const NSUInteger length = [string length];
    [string getCharacters:reinterpret_cast<unichar *>(text.Reserve(length)) range:NSMakeRange(0, length)];
    text.SetSize(length);
    const bool valid = string != nil;
    [string release];
    return valid;
}

bool NonLossyASCIICodec::Encode(const char16_t *units, size_t count, ByteWriter &bytes) const
{
    @autoreleasepool {
        NSString *const string = [NewString(units, count) autorelease];
        NSData *const encoded = [string dataUsingEncoding:NSNonLossyASCIIStringEncoding];
        return encoded != nil && bytes.Append([encoded bytes], [encoded length]);
    }
}

} // namespace cocoaport

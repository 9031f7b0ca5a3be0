// Turns a Cocoa number into a host variant of the kind that it was made from.
#include "bridge/to_host/number_to_host.h"

#import <Foundation/Foundation.h>

#include <climits>

#include "frame/host_entry_points.h"

namespace {

REALobject NewDouble(NSNumber *number)
{
    return REALNewVariantDouble([number doubleValue]);
}

constexpr struct {
    /// The number's whole `objCType`.
    char letter;
    REALobject (*convert)(NSNumber *number);
} kNumberTypes[] = {
    // A char is a boolean, not an integer.
    {'c', [](NSNumber *number) { return REALNewVariantBoolean([number boolValue] != NO); }},
    {'C', [](NSNumber *number) { return REALNewVariantInteger([number unsignedCharValue]); }},
    {'s', [](NSNumber *number) { return REALNewVariantInteger([number shortValue]); }},
    {'S', [](NSNumber *number) { return REALNewVariantInteger([number unsignedShortValue]); }},
    {'i', [](NSNumber *number) { return REALNewVariantInteger([number intValue]); }},
    {'I', [](NSNumber *number) { return REALNewVariantUInt32([number unsignedIntValue]); }},
    {'q', [](NSNumber *number) { return REALNewVariantInteger([number longValue]); }},
    // Cut to its low 32 bits.
    {'Q',
     [](NSNumber *number) {
         return REALNewVariantUInt32(static_cast<uint32_t>([number unsignedLongValue]));
     }},
    {'f', [](NSNumber *number) { return REALNewVariantSingle([number floatValue]); }},
};

/// The conversions by letter.
struct ConversionsByLetter {
    constexpr ConversionsByLetter()
    {
        for (auto &conversion : conversions)
            conversion = NewDouble;
        for (const auto &row : kNumberTypes)
            conversions[static_cast<unsigned char>(row.letter)] = row.convert;
    }

    REALobject (*conversions[UCHAR_MAX + 1])(NSNumber *number) = {};
};
constexpr ConversionsByLetter kByLetter;

} // namespace

REALobject NewVariantFromNSNumber(NSNumber *number)
{
    const char *const objCType = [number objCType];
    if (objCType[0] == '\0' || objCType[1] != '\0')
        return NewDouble(number);
    return kByLetter.conversions[static_cast<unsigned char>(objCType[0])](number);
}

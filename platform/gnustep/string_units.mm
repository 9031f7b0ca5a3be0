// Strings of arbitrary UTF-16 units.
#include "platform/gnustep/string_units.h"

#include <unicode/utf16.h>

#include <algorithm>

/// A string over borrowed units. GNUstep's mutable strings accept any units of another string unchecked, and
/// so do immutable copies of them.
@interface CocoaportBorrowedUnits : NSString {
    const char16_t *units;
    NSUInteger count;
}
- (id)initWithBorrowedUnits:(const char16_t *)theUnits count:(NSUInteger)theCount;
@end

@implementation CocoaportBorrowedUnits

- (id)initWithBorrowedUnits:(const char16_t *)theUnits count:(NSUInteger)theCount
{
    self = [super init];
    if (self != nil) {
        units = theUnits;
        count = theCount;
    }
    return self;
}

- (NSUInteger)length
{
    return count;
}

- (unichar)characterAtIndex:(NSUInteger)index
{
    return units[index];
}

- (void)getCharacters:(unichar *)buffer range:(NSRange)range
{
    std::copy_n(units + range.location, range.length, buffer);
}

@end

namespace cocoaport {

namespace {

constexpr char16_t kByteOrderMark = 0xFEFF;
constexpr char16_t kSwappedByteOrderMark = 0xFFFE;

/// Whether GNUstep's initialisers keep the text as it is.
bool IsOrdinary(const char16_t *units, size_t count)
{
    if (count > 0 && (units[0] == kByteOrderMark || units[0] == kSwappedByteOrderMark))
        return false;
    for (size_t index = 0; index < count;) {
        if (!U16_IS_SURROGATE(units[index])) {
            ++index;
            continue;
        }
        UChar32 codePoint = 0;
        U16_NEXT(units, index, count, codePoint);
        if (U_IS_SURROGATE(codePoint))
            return false;
    }
    return true;
}

} // namespace

NSString *NewString(const char16_t *units, size_t count)
{
    if (IsOrdinary(units, count))
        return [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar *>(units) length:count];
    NSMutableString *const text = [[NSMutableString alloc] init];
    SetUnits(text, units, count);
    NSString *const string = [text copy];
    [text release];
    return string;
}

void SetUnits(NSMutableString *string, const char16_t *units, size_t count)
{
    CocoaportBorrowedUnits *const borrowed = [[CocoaportBorrowedUnits alloc] initWithBorrowedUnits:units
                                                                                             count:count];
    [string replaceCharactersInRange:NSMakeRange(0, [string length]) withString:borrowed];
    [borrowed release];
}

} // namespace cocoaport

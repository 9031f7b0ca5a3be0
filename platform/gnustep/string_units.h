// Strings of arbitrary UTF-16 units. GNUstep's own initialisers refuse lone surrogates and drop a
// leading byte-order mark; these keep both.
#pragma once

#import <Foundation/Foundation.h>

#include <cstddef>

namespace cocoaport {

/// A string of the units, owned by the caller.
NSString *NewString(const char16_t *units, size_t count);

/// Replaces all of the string's text.
void SetUnits(NSMutableString *string, const char16_t *units, size_t count);

} // namespace cocoaport

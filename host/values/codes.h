// The numbers of types and of string encodings.
#pragma once

#include <cstdint>

namespace qzlhost {

/// The host's type codes, which VarType returns. An array's is Array plus its element's.
namespace code {
// Not Nil: that is a macro in Objective-C.
inline constexpr int64_t Null = 0, Int32 = 2, Int64 = 3, Single = 4, Double = 5, Currency = 6, Date = 7,
                         String = 8, Object = 9, Boolean = 11, Color = 16, Text = 37, Array = 4096;
} // namespace code

/// String encodings, by Core Foundation's numbers.
namespace encoding {
inline constexpr uint32_t MacRoman = 0, UTF16 = 0x0100, Latin1 = 0x0201, WindowsLatin1 = 0x0500,
                          ASCII = 0x0600, UTF8 = 0x08000100, UTF32 = 0x0C000100, Unknown = 0xFFFF;
}

} // namespace qzlhost

// Makes host strings: from bytes in an encoding, from UTF-16, from Core Foundation strings. Encodings are
// Core Foundation's numbers.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>

#include "frame/host_types.h"

/// The host's tag for a string whose encoding is not known: raw bytes.
inline constexpr uint32_t kUnknownEncoding = 0xFFFF;

/// A new host string of bytes in an encoding, with one reference for the caller. Null for null bytes, for a
/// length (in bytes) below 1 or above 0x7FFFFFFF, and when the host cannot make it. UTF-16 and UTF-32, both
/// in the machine's byte order, come out as UTF-8. A C++ exception on the way becomes a host exception and
/// the result is null.
REALstring REALBuildUnicodeString(const void *bytes, int64_t length, uint32_t encoding);

/// A new host string in UTF-8 of UTF-16 units, with one reference for the caller, or null. `length` is in
/// bytes.
REALstring REALBuildUnicodeStringUTF16(const void *units, int64_t length);

/// A new host string of a Core Foundation string, up to its first NUL, with one reference for the caller.
/// Null for null, for an empty string, and for one that UTF-8 cannot hold.
REALstring CFString2RBString(CFStringRef string);

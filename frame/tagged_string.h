// Builds host strings of bytes that need no conversion, such as the messages of errors.
#pragma once

#include "frame/host_references.h"

/// The longest string in bytes.
inline constexpr int64_t kLongestString = 0x7FFFFFFF;

/// A new host string of 1 to `kLongestString` bytes, tagged with their encoding, with one reference for the
/// caller, or null.
inline REALstring BuildTaggedString(const void *bytes, int64_t length, uint32_t encoding)
{
    HostRef<REALstring> string(
        originalREALBuildString(static_cast<const char *>(bytes), static_cast<int32_t>(length)));
    if (string)
        REALSetStringEncoding(string.Get(), encoding);
    return string.Release();
}

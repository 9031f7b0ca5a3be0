// The host that loaded the library: how to find its functions, and which version it is.
#pragma once

#include <cstdint>

/// The latest class-record version, which applies until the host's own version is known.
inline constexpr uint32_t kLatestRecordVersion = 13;

/// Finds a host function by name; null if the host lacks it. Set once, at start-up.
inline void *(*gResolver)(const char *name) = nullptr;

/// The host's version as year and release, such as 2013.04; 0 while it is unknown.
inline double rbversion_rbversion = 0.0;

/// The class-record version that the library declares, 9 to 13.
inline int64_t CurrentREALControlVersion = kLatestRecordVersion;

/// Whether the host is of this version or later. A version that is not a number counts as older than any.
inline bool HostIsAtLeast(double version)
{
    return rbversion_rbversion >= version;
}

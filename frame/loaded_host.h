// The host that loaded the library: how its functions are found, and of which version it is.
#pragma once

#include <cstdint>

/// The latest class-record version, which stands until the host's own version is known.
inline constexpr uint32_t kLatestRecordVersion = 13;

/// Finds a host function by name; null when the host has none of that name. Set once, at start-up.
inline void *(*gResolver)(const char *name) = nullptr;

/// The host's version as year and release, such as 2013.04; 0 while it is unknown.
inline double rbversion_rbversion = 0.0;

/// The class-record version that the library declares, 9 to 13.
inline int64_t CurrentREALControlVersion = kLatestRecordVersion;

/// Whether the host is of this version or later. One whose version is not a number is older than all.
inline bool HostIsAtLeast(double version)
{
    return rbversion_rbversion >= version;
}

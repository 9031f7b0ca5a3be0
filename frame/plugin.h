// What the library learns when the host loads it: the host's resolver, its version, the record version.
#pragma once

#include <cstdint>

/// Finds a host function by name; null when the host has none of that name. Set once, at start-up.
extern void *(*gResolver)(const char *name);

/// The host's version as year and release, such as 2013.04; 0 while it is unknown.
extern double rbversion_rbversion;

/// Whether the host is of this version or later. One whose version is not a number is older than all.
inline bool HostIsAtLeast(double version)
{
    return rbversion_rbversion >= version;
}

/// The class-record version that the library declares, 9 to 13.
extern int64_t CurrentREALControlVersion;

/// Called by the host once, before any other call: registers the library's classes.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(void *(*resolver)(const char *name));

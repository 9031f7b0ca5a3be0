// Wall-clock time by the C library, which neither the host nor the library uses.
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

/// Year, month, day, hour, minute, second.
using Fields = std::array<int64_t, 6>;

inline constexpr std::time_t kHour = 3600;
inline constexpr std::time_t kDay = 24 * kHour;
/// The end of 2037: until then the C library and Foundation know each change of a clock.
inline constexpr std::time_t kLastInstant = 2145916800;

/// Like "2024-02-29 14:05:09".
std::string TextOf(const Fields &fields);

/// The time on the local clock at an instant, and on that of Greenwich.
Fields LocalFields(std::time_t instant);
Fields UniversalFields(std::time_t instant);

/// The instant at which the local clock, or that of Greenwich, shows the fields, which may be out of range.
std::time_t LocalInstant(const Fields &fields);
std::time_t UniversalInstant(const Fields &fields);

/// How far the local clock is ahead of Greenwich at an instant, in seconds.
std::time_t OffsetAt(std::time_t instant);

/// The instants from this one to the last one at which the local clock is put forward or back.
std::vector<std::time_t> ClockChanges(std::time_t first);

/// Sets the local time zone of the C library and Cocoa's default one.
void SetTimeZone(const char *name);

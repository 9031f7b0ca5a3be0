// Wall-clock time by the C library, which neither the host nor the library uses.
#include "tests/support/wall_clock.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <cstdlib>

#include "host/host.h"

namespace {

Fields FieldsOf(const std::tm &broken)
{
    return {broken.tm_year + int64_t{1900},
            broken.tm_mon + int64_t{1},
            broken.tm_mday,
            broken.tm_hour,
            broken.tm_min,
            broken.tm_sec};
}

std::tm BrokenDown(const Fields &fields)
{
    std::tm broken{};
    broken.tm_year = static_cast<int>(fields[0] - 1900);
    broken.tm_mon = static_cast<int>(fields[1] - 1);
    broken.tm_mday = static_cast<int>(fields[2]);
    broken.tm_hour = static_cast<int>(fields[3]);
    broken.tm_min = static_cast<int>(fields[4]);
    broken.tm_sec = static_cast<int>(fields[5]);
    broken.tm_isdst = -1;
    return broken;
}

/// The first instant after `before`, and not after `after`, with the offset that holds at `after`.
std::time_t ChangeBetween(std::time_t before, std::time_t after)
{
    while (after - before > 1) {
        const std::time_t middle = before + (after - before) / 2;
        (OffsetAt(middle) == OffsetAt(before) ? before : after) = middle;
    }
    return after;
}

} // namespace

std::string TextOf(const Fields &fields)
{
    char text[200];
    std::snprintf(text, sizeof text, "%04ld-%02ld-%02ld %02ld:%02ld:%02ld", fields[0], fields[1], fields[2],
                  fields[3], fields[4], fields[5]);
    return text;
}

Fields LocalFields(std::time_t instant)
{
    std::tm local{};
    return FieldsOf(*localtime_r(&instant, &local));
}

Fields UniversalFields(std::time_t instant)
{
    std::tm universal{};
    return FieldsOf(*gmtime_r(&instant, &universal));
}

std::time_t LocalInstant(const Fields &fields)
{
    std::tm local = BrokenDown(fields);
    return std::mktime(&local);
}

std::time_t UniversalInstant(const Fields &fields)
{
    std::tm universal = BrokenDown(fields);
    return timegm(&universal);
}

std::time_t OffsetAt(std::time_t instant)
{
    std::tm local{};
    return localtime_r(&instant, &local)->tm_gmtoff;
}

std::vector<std::time_t> ClockChanges(std::time_t first)
{
    std::vector<std::time_t> changes;
    for (std::time_t day = first; day < kLastInstant; day += kDay)
        if (OffsetAt(day) != OffsetAt(day + kDay))
            changes.push_back(ChangeBetween(day, day + kDay));
    return changes;
}

void SetTimeZone(const char *name)
{
    setenv("TZ", name, 1);
    tzset();
    const qzlhost::AutoreleasePool pool;
    [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneWithName:[NSString stringWithUTF8String:name]]];
}

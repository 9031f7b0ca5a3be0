// Turns a Cocoa date into a host Date.
#include "bridge/to_host/date_to_host.h"

#import <Foundation/Foundation.h>

#include "frame/host_references.h"

REALobject NewHostDate(NSDate *date)
{
    // Read before anything is allocated: it may raise.
    const double seconds = [date timeIntervalSinceReferenceDate];
    NSCalendarDate *const calendarDate =
        [[[NSCalendarDate alloc] initWithTimeIntervalSinceReferenceDate:seconds] autorelease];
    if (calendarDate == nil)
        return nullptr;
    const int64_t year = [calendarDate yearOfCommonEra];
    const int64_t month = [calendarDate monthOfYear];
    const int64_t day = [calendarDate dayOfMonth];
    const int64_t second = [calendarDate secondOfMinute];
    const int64_t minute = [calendarDate minuteOfHour];
    const int64_t hour = [calendarDate hourOfDay];

    HostRef<REALobject> result(REALnewInstance("Date"));
    if (!result)
        return nullptr;
    using Constructor = void (*)(REALobject self, int64_t year, int64_t month, int64_t day, int64_t hour,
                                 int64_t minute, int64_t second);
    const auto constructor = reinterpret_cast<Constructor>(REALLoadObjectMethod(
        result.Get(),
        "Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, minute as Integer = "
        "0, second as Integer = 0"));
    if (constructor != nullptr) {
        constructor(result.Get(), year, month, day, hour, minute, second);
        return result.Release();
    }
    REALSetPropValueInteger(result.Get(), "Year", year);
    REALSetPropValueInteger(result.Get(), "Month", month);
    REALSetPropValueInteger(result.Get(), "Day", day);
    REALSetPropValueInteger(result.Get(), "Hour", hour);
    REALSetPropValueInteger(result.Get(), "Minute", minute);
    REALSetPropValueInteger(result.Get(), "Second", second);
    return result.Release();
}

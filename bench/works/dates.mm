// A date, each way.
#include "bench/host_functions.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "bridge/to_host/object_to_variant.h"

using qzlhost::Value;

namespace {

constexpr double kTarget = 1.15;

id FloorToCocoa(REALobject variant)
{
    if (gHost.varType(variant) != qzlhost::code::Date)
        return nil;
    REALobject date = nullptr;
    if (!gHost.getObject(variant, "DateValue", &date))
        return nil;
    int64_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    gHost.getInteger(date, "Year", &year);
    gHost.getInteger(date, "Month", &month);
    gHost.getInteger(date, "Day", &day);
    gHost.getInteger(date, "Hour", &hour);
    gHost.getInteger(date, "Minute", &minute);
    gHost.getInteger(date, "Second", &second);
    NSCalendarDate *const result = [NSCalendarDate dateWithYear:year
                                                          month:static_cast<NSUInteger>(month)
                                                            day:static_cast<NSUInteger>(day)
                                                           hour:static_cast<NSUInteger>(hour)
                                                         minute:static_cast<NSUInteger>(minute)
                                                         second:static_cast<NSUInteger>(second)
                                                       timeZone:[NSTimeZone localTimeZone]];
    gHost.unlockObject(date);
    return result;
}

REALobject FloorToHost(NSDate *date)
{
    using Constructor = void (*)(REALobject self, int64_t year, int64_t month, int64_t day, int64_t hour,
                                 int64_t minute, int64_t second);
    NSCalendarDate *const calendarDate = [[[NSCalendarDate alloc]
        initWithTimeIntervalSinceReferenceDate:[date timeIntervalSinceReferenceDate]] autorelease];
    const int64_t year = [calendarDate yearOfCommonEra];
    const int64_t month = [calendarDate monthOfYear];
    const int64_t day = [calendarDate dayOfMonth];
    const int64_t second = [calendarDate secondOfMinute];
    const int64_t minute = [calendarDate minuteOfHour];
    const int64_t hour = [calendarDate hourOfDay];
    const REALobject result = gHost.newInstance("Date");
    const auto constructor = reinterpret_cast<Constructor>(gHost.loadObjectMethod(
        result,
        "Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, minute as Integer = "
        "0, second as Integer = 0"));
    constructor(result, year, month, day, hour, minute, second);
    return result;
}

Sides ToCocoa()
{
    const Value date = qzlhost::Host::Current().NewDate(2024, 2, 29, 14, 5, 9);
    return MakeSides([date] { return GetVariantAsNSObject(ObjectOf(date)); },
                     [date] { return FloorToCocoa(ObjectOf(date)); });
}

Sides ToHost()
{
    const Kept date([NSDate dateWithTimeIntervalSinceReferenceDate:730'000'000.5]);
    return MakeSides([date] { return NewVariantFromNSObject(date.Get()); },
                     [date] { return FloorToHost(date.Get()); });
}

} // namespace

void AddDateWorks(std::vector<Work> &works)
{
    works.push_back({"dates/to_cocoa", ToCocoa, kTarget});
    works.push_back({"dates/to_host", ToHost, kTarget});
}

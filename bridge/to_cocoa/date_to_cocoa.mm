// Turns a host Date into a Cocoa date.
#include "bridge/to_cocoa/date_to_cocoa.h"

#import <Foundation/Foundation.h>

#include <iterator>

#include "frame/host_entry_points.h"

namespace {

/// In the order in which they are read and passed to Cocoa.
constexpr const char *kFields[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};

} // namespace

NSCalendarDate *NewNSDate(REALobject date)
{
    if (date == nullptr)
        return nil;
    int64_t fields[std::size(kFields)] = {};
    for (size_t index = 0; index < std::size(kFields); ++index)
        if (!REALGetPropValueInteger(date, kFields[index], &fields[index]))
            return nil;
    // Cocoa normalises values out of range. It takes all but the year as unsigned.
    return [NSCalendarDate dateWithYear:fields[0]
                                  month:static_cast<NSUInteger>(fields[1])
                                    day:static_cast<NSUInteger>(fields[2])
                                   hour:static_cast<NSUInteger>(fields[3])
                                 minute:static_cast<NSUInteger>(fields[4])
                                 second:static_cast<NSUInteger>(fields[5])
                               timeZone:[NSTimeZone localTimeZone]];
}

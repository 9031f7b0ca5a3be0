// Dates that a program reads around published changes of the clocks.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "tests/bridge/to_host/program_reading_test.h"
#include "tests/support/replaced_method.h"
#include "tests/support/row_names.h"
#include "tests/support/wall_clock.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The moment of a change in universal time, and what the zone's clocks showed one second before it and at
/// it.
struct ChangeRow {
    const char *name;
    const char *zone;
    Fields moment;
    const char *before;
    const char *after;
};

const ChangeRow kChanges[] = {
    {"BerlinForward", "Europe/Berlin", Fields{2024, 3, 31, 1, 0, 0}, "2024-03-31 01:59:59",
     "2024-03-31 03:00:00"},
    {"BerlinBack", "Europe/Berlin", Fields{2024, 10, 27, 1, 0, 0}, "2024-10-27 02:59:59",
     "2024-10-27 02:00:00"},
    {"NewYorkForward", "America/New_York", Fields{2024, 3, 10, 7, 0, 0}, "2024-03-10 01:59:59",
     "2024-03-10 03:00:00"},
    {"NewYorkBack", "America/New_York", Fields{2024, 11, 3, 6, 0, 0}, "2024-11-03 01:59:59",
     "2024-11-03 01:00:00"},
    {"NewYorkForwardByTheRulesUntil2006", "America/New_York", Fields{2006, 4, 2, 7, 0, 0},
     "2006-04-02 01:59:59", "2006-04-02 03:00:00"},
    {"SydneyForward", "Australia/Sydney", Fields{2024, 10, 5, 16, 0, 0}, "2024-10-06 01:59:59",
     "2024-10-06 03:00:00"},
    {"LordHoweForwardByHalfAnHour", "Australia/Lord_Howe", Fields{2024, 10, 5, 15, 30, 0},
     "2024-10-06 01:59:59", "2024-10-06 02:30:00"},
    {"LordHoweBackByHalfAnHour", "Australia/Lord_Howe", Fields{2024, 4, 6, 15, 0, 0}, "2024-04-07 01:59:59",
     "2024-04-07 01:30:00"},
    {"StJohnsOneMinutePastMidnight", "America/St_Johns", Fields{2011, 3, 13, 3, 31, 0}, "2011-03-13 00:00:59",
     "2011-03-13 01:01:00"},
    {"ApiaWithoutADay", "Pacific/Apia", Fields{2011, 12, 30, 10, 0, 0}, "2011-12-29 23:59:59",
     "2011-12-31 00:00:00"},
};

class ReadDates : public ProgramReadingTest {
protected:
    Value ReadDate(double secondsSince1970)
    {
        return Read([NSDate dateWithTimeIntervalSince1970:secondsSince1970]);
    }
};

class ReadClockChange : public ReadDates, public ::testing::WithParamInterface<ChangeRow> {};

} // namespace

TEST_P(ReadClockChange, ShowsTheWallClockBeforeAndAfter)
{
    Start();
    SetTimeZone(GetParam().zone);
    const auto change = static_cast<double>(UniversalInstant(GetParam().moment));
    EXPECT_EQ(ReadDate(change - 1).AsString(), GetParam().before);
    EXPECT_EQ(ReadDate(change - 0.5).AsString(), GetParam().before) << "fractions are dropped";
    EXPECT_EQ(ReadDate(change).AsString(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Rows, ReadClockChange, ::testing::ValuesIn(kChanges), kNameOfRow);

namespace {

id MakeNoDate(id self, SEL, NSTimeInterval)
{
    [self release];
    return nil;
}

} // namespace

TEST_F(ReadDates, WithoutACalendarDateThereIsNone)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    const SEL initializer = @selector(initWithTimeIntervalSinceReferenceDate:);
    const Method method = class_getInstanceMethod([NSCalendarDate class], initializer);
    ASSERT_NE(method, class_getInstanceMethod([NSDate class], initializer)) << "of its own";
    {
        const ReplacedMethod replaced(method, &MakeNoDate);
        const int instances = host.CallsOf("PluginNewInstance");
        EXPECT_TRUE(ReadDate(0).IsNil());
        EXPECT_EQ(host.CallsOf("PluginNewInstance"), instances) << "no later step is tried";
    }
    EXPECT_FALSE(ReadDate(0).IsNil());
}

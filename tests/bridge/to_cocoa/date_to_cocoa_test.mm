// Host dates become Cocoa dates at the instants of the C library.
#include <cctype>

#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/wall_clock.h"

using qzlhost::Value;

namespace {

/// The beginning of 1971.
constexpr std::time_t kFirst = 31536000;

/// Every instant at which the C library's local clock shows the fields.
std::vector<std::time_t> InstantsOf(const Fields &fields)
{
    constexpr std::time_t kStep = 900; // clocks change by no less
    std::vector<std::time_t> instants;
    const std::time_t near = LocalInstant(fields);
    for (std::time_t instant = near - kDay; instant <= near + kDay; instant += kStep)
        if (LocalFields(instant) == fields)
            instants.push_back(instant);
    return instants;
}

class DateToCocoa : public MemberConversion {
protected:
    Value NewDate(const Fields &fields)
    {
        const auto [year, month, day, hour, minute, second] = fields;
        return host().NewDate(year, month, day, hour, minute, second);
    }

    NSCalendarDate *Convert(const Fields &fields)
    {
        const Value date = NewDate(fields);
        NSCalendarDate *const converted = MemberConversion::Convert(date);
        EXPECT_EQ(host().References(date), 1);
        host().ClearTrace();
        return converted;
    }
};

std::time_t InstantOf(NSDate *date)
{
    return static_cast<std::time_t>([date timeIntervalSince1970]);
}

Fields FieldsOf(NSCalendarDate *date)
{
    return {[date yearOfCommonEra], [date monthOfYear],  [date dayOfMonth],
            [date hourOfDay],       [date minuteOfHour], [date secondOfMinute]};
}

/// The instants at which the clock would show the fields without the change: by its distance from UTC two
/// days before and two days after, from the C library.
std::vector<std::time_t> InstantsWithoutAChange(const Fields &fields)
{
    const std::time_t inUTC = UniversalInstant(fields);
    std::vector<std::time_t> instants;
    for (const std::time_t distance : {-2 * kDay, 2 * kDay})
        instants.push_back(inUTC - OffsetAt(inUTC + distance));
    return instants;
}

class DateInZone : public DateToCocoa, public ::testing::WithParamInterface<const char *> {
protected:
    /// Checks the date that the local clock shows at an instant, unless it shows it twice.
    void ExpectInstant(std::time_t instant)
    {
        const Fields fields = LocalFields(instant);
        if (InstantsOf(fields).size() != 1)
            return;
        const qzlhost::AutoreleasePool pool;
        NSCalendarDate *const date = Convert(fields);
        EXPECT_EQ(InstantOf(date), instant) << TextOf(fields);
        EXPECT_EQ(FieldsOf(date), fields) << TextOf(fields);
    }
};

/// Whether the zone, one of those here, has had the same time since 1971.
bool ChangesNever(std::string_view zone)
{
    return zone == "UTC" || zone == "Asia/Kolkata";
}

std::string ZoneName(const ::testing::TestParamInfo<const char *> &info)
{
    std::string name;
    for (const char *next = info.param; *next != '\0'; ++next)
        if (std::isalnum(static_cast<unsigned char>(*next)))
            name += *next;
    return name;
}

constexpr const char *kZones[] = {
    "UTC",
    "Europe/Berlin",
    "Europe/Dublin", // its winter time is the one that counts as changed
    "America/New_York",
    "America/St_Johns",    // half an hour off
    "America/Sao_Paulo",   // changed at midnight
    "Australia/Lord_Howe", // changes by half an hour
    "Asia/Kolkata",        // never changes
    "Asia/Kathmandu",      // a quarter of an hour off
    "Pacific/Apia",        // left out a day
    "Pacific/Kiritimati",  // furthest ahead
};

struct ClockTime {
    const char *zone;
    Fields fields;
};

void PrintTo(const ClockTime &time, std::ostream *stream)
{
    *stream << time.zone << " " << TextOf(time.fields);
}

class MissingHour : public DateToCocoa, public ::testing::WithParamInterface<ClockTime> {};
class HourThatComesTwice : public DateToCocoa, public ::testing::WithParamInterface<ClockTime> {};

} // namespace

TEST_P(DateInZone, IsTheCLibrarysInstantOnBothSidesOfEachClockChange)
{
    SetTimeZone(GetParam());
    Start();
    const std::vector<std::time_t> changes = ClockChanges(kFirst);
    EXPECT_EQ(changes.empty(), ChangesNever(GetParam()));
    for (const std::time_t change : changes)
        for (const std::time_t distance : {-90000, -7200, -3601, -1801, -1, 0, 1, 1800, 3600, 7200, 90000})
            ExpectInstant(change + distance);
}

TEST_P(DateInZone, IsTheCLibrarysInstantAllTheYearRound)
{
    SetTimeZone(GetParam());
    Start();
    for (std::time_t instant = kFirst; instant < kLastInstant; instant += 31 * kDay + 5 * kHour + 61)
        ExpectInstant(instant);
}

TEST_P(DateInZone, OfLeapDaysAndYearEndsIsTheCLibrarysInstant)
{
    SetTimeZone(GetParam());
    Start();
    for (const Fields &fields :
         {Fields{2024, 2, 29, 14, 5, 9}, Fields{2024, 2, 28, 23, 59, 59}, Fields{2024, 3, 1, 0, 0, 0},
          Fields{2023, 2, 28, 23, 59, 59}, Fields{2023, 3, 1, 0, 0, 0}, Fields{2000, 2, 29, 12, 0, 0},
          Fields{1999, 12, 31, 23, 59, 59}, Fields{2000, 1, 1, 0, 0, 0}, Fields{1970, 1, 2, 0, 0, 0},
          Fields{2037, 12, 31, 23, 59, 59}}) {
        const qzlhost::AutoreleasePool pool;
        NSCalendarDate *const date = Convert(fields);
        EXPECT_EQ(InstantOf(date), LocalInstant(fields)) << TextOf(fields);
        EXPECT_EQ(FieldsOf(date), fields) << TextOf(fields);
    }
}

/// Before 1902 and after 2037 Foundation on Linux knows one offset for each zone, which may differ from the C
/// library's: the clock reads the same, but the instant may not.
TEST_P(DateInZone, FarFromTodayReadsAsTheHostsDate)
{
    SetTimeZone(GetParam());
    Start();
    for (const Fields &fields :
         {Fields{1, 1, 1, 0, 0, 0}, Fields{4, 2, 29, 1, 2, 3}, Fields{1582, 10, 10, 12, 0, 0},
          Fields{1900, 2, 28, 23, 59, 59}, Fields{2038, 7, 1, 12, 0, 0}, Fields{2100, 2, 28, 23, 59, 59},
          Fields{9999, 12, 31, 23, 59, 59}}) {
        const qzlhost::AutoreleasePool pool;
        NSCalendarDate *const date = Convert(fields);
        EXPECT_EQ(FieldsOf(date), fields) << TextOf(fields);
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, DateInZone, ::testing::ValuesIn(kZones), ZoneName);

TEST_F(DateToCocoa, FarFromTodayIsTheCLibrarysInstantInUTC)
{
    SetTimeZone("UTC");
    Start();
    for (const Fields &fields :
         {Fields{1, 1, 1, 0, 0, 0}, Fields{4, 2, 29, 1, 2, 3}, Fields{1582, 10, 4, 0, 0, 0},
          Fields{1582, 10, 10, 0, 0, 0}, Fields{1582, 10, 15, 0, 0, 0}, Fields{1900, 2, 28, 23, 59, 59},
          Fields{1900, 3, 1, 0, 0, 0}, Fields{2100, 2, 28, 0, 0, 0}, Fields{2100, 3, 1, 0, 0, 0},
          Fields{9999, 12, 31, 23, 59, 59}}) {
        NSCalendarDate *const date = Convert(fields);
        EXPECT_EQ(InstantOf(date), LocalInstant(fields)) << TextOf(fields);
        EXPECT_EQ(FieldsOf(date), fields) << TextOf(fields);
    }
}

/// Cocoa chooses one of the two.
TEST_P(MissingHour, IsTheInstantBeforeOrAfterTheChange)
{
    const auto &[zone, fields] = GetParam();
    SetTimeZone(zone);
    Start();
    ASSERT_EQ(InstantsOf(fields).size(), 0u) << "the clock shows it";

    NSCalendarDate *const date = Convert(fields);

    ASSERT_NE(date, nil);
    const std::vector<std::time_t> instants = InstantsWithoutAChange(fields);
    ASSERT_NE(instants[0], instants[1]);
    EXPECT_TRUE(InstantOf(date) == instants[0] || InstantOf(date) == instants[1])
        << InstantOf(date) << " is neither " << instants[0] << " nor " << instants[1];
}

INSTANTIATE_TEST_SUITE_P(Zones, MissingHour,
                         ::testing::Values(ClockTime{"Europe/Berlin", {2024, 3, 31, 2, 0, 0}},
                                           ClockTime{"Europe/Berlin", {2024, 3, 31, 2, 30, 0}},
                                           ClockTime{"Europe/Berlin", {2024, 3, 31, 2, 59, 59}},
                                           ClockTime{"America/New_York", {2024, 3, 10, 2, 30, 0}},
                                           ClockTime{"America/St_Johns", {2024, 3, 10, 2, 30, 0}},
                                           ClockTime{"America/Sao_Paulo", {2018, 11, 4, 0, 30, 0}},
                                           ClockTime{"Australia/Lord_Howe", {2024, 10, 6, 2, 15, 0}},
                                           ClockTime{"Pacific/Apia", {2011, 12, 30, 12, 0, 0}}));

/// Cocoa chooses one of the two: on Linux sometimes the first, sometimes the second.
TEST_P(HourThatComesTwice, IsOneOfBothInstants)
{
    const auto &[zone, fields] = GetParam();
    SetTimeZone(zone);
    Start();
    const std::vector<std::time_t> instants = InstantsOf(fields);
    ASSERT_EQ(instants.size(), 2u);

    NSCalendarDate *const date = Convert(fields);

    EXPECT_TRUE(InstantOf(date) == instants[0] || InstantOf(date) == instants[1]) << InstantOf(date);
    EXPECT_EQ(FieldsOf(date), fields);
}

INSTANTIATE_TEST_SUITE_P(Zones, HourThatComesTwice,
                         ::testing::Values(ClockTime{"Europe/Berlin", {2024, 10, 27, 2, 0, 0}},
                                           ClockTime{"Europe/Berlin", {2024, 10, 27, 2, 59, 59}},
                                           ClockTime{"America/New_York", {2024, 11, 3, 1, 30, 0}},
                                           ClockTime{"America/St_Johns", {2024, 11, 3, 1, 30, 0}},
                                           ClockTime{"America/Sao_Paulo", {2018, 2, 17, 23, 30, 0}},
                                           ClockTime{"Australia/Lord_Howe", {2024, 4, 7, 1, 30, 0}},
                                           ClockTime{"Australia/Lord_Howe", {2024, 4, 7, 1, 59, 59}},
                                           ClockTime{"Pacific/Apia", {2021, 4, 4, 3, 30, 0}}));

TEST_F(DateToCocoa, FollowsTheLocalTimeZoneOfTheMoment)
{
    const Fields fields = {2024, 7, 1, 12, 0, 0};
    SetTimeZone("Asia/Kolkata");
    Start();
    const Value date = NewDate(fields);

    NSCalendarDate *const inKolkata = MemberConversion::Convert(date);
    SetTimeZone("America/New_York");
    NSCalendarDate *const inNewYork = MemberConversion::Convert(date);

    EXPECT_EQ([inNewYork timeIntervalSinceDate:inKolkata], 9.5 * 3600);
    EXPECT_EQ(InstantOf(inNewYork), LocalInstant(fields));
}

TEST_F(DateToCocoa, IsTheCallersOnlyUntilThePoolEnds)
{
    SetTimeZone("UTC");
    Start();
    NSCalendarDate *date = nil;
    {
        const qzlhost::AutoreleasePool pool;
        date = [Convert({2024, 2, 29, 14, 5, 9}) retain];
        EXPECT_TRUE([date isKindOfClass:[NSCalendarDate class]]);
    }
    EXPECT_EQ([date retainCount], 1u);
    [date release];
}

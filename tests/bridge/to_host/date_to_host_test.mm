// Cocoa dates become host Dates with the wall clock of the default time zone.
#include <cmath>

#include "tests/support/conversion_doubles.h"
#include "tests/support/row_names.h"
#include "tests/support/trace.h"
#include "tests/support/wall_clock.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr char kConstructor[] =
    "Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, minute as Integer = 0, "
    "second as Integer = 0";

NSDate *DateSince1970(double seconds)
{
    return [NSDate dateWithTimeIntervalSince1970:seconds];
}

std::time_t WholeSeconds(double secondsSince1970)
{
    return static_cast<std::time_t>(std::floor(secondsSince1970));
}

std::string UniversalTime(double secondsSince1970)
{
    return TextOf(UniversalFields(WholeSeconds(secondsSince1970)));
}

std::string LocalTime(double secondsSince1970)
{
    return TextOf(LocalFields(WholeSeconds(secondsSince1970)));
}

struct ZoneRow {
    const char *name;
    const char *zone;
    /// Whether its clocks were ever changed from 1970 on.
    bool changes;
};

constexpr ZoneRow kZones[] = {
    {"UTC", "UTC", false},
    {"Berlin", "Europe/Berlin", true},
    {"NewYork", "America/New_York", true},
    {"LordHowe", "Australia/Lord_Howe", true},
    {"Kolkata", "Asia/Kolkata", false},
    {"StJohns", "America/St_Johns", true},
    {"Apia", "Pacific/Apia", true},
};

class HostDateInZone : public LinkedTest, public ::testing::WithParamInterface<ZoneRow> {};

class DateToHost : public LinkedTest {
protected:
    Host &StartInUniversalTime(const std::function<void(Host &)> &prepare = nullptr)
    {
        Host &host = Start(2024.01, prepare);
        SetTimeZone("UTC");
        return host;
    }
};

/// 29 February 2024, 14:05:09 UTC, since 1970.
constexpr double kLeapDay = 1709215509;

} // namespace

TEST_P(HostDateInZone, HasTheWallClockOnBothSidesOfEachChange)
{
    Start();
    SetTimeZone(GetParam().zone);
    const std::vector<std::time_t> changes = ClockChanges(0);
    ASSERT_EQ(!changes.empty(), GetParam().changes);
    for (const std::time_t change : changes)
        for (const int distance : {-7200, -3600, -1800, -1, 0, 1, 1799, 3599, 3600, 7200}) {
            const auto moment = static_cast<double>(change + distance);
            ASSERT_EQ(Convert(DateSince1970(moment)).AsString(), LocalTime(moment))
                << change << ' ' << distance;
        }
}

TEST_P(HostDateInZone, HasTheWallClockOfEveryMonth)
{
    Start();
    SetTimeZone(GetParam().zone);
    constexpr double kMonth = 30.436875 * 86400;
    for (double moment = -2.0e9; moment < static_cast<double>(kLastInstant); moment += kMonth)
        ASSERT_EQ(Convert(DateSince1970(moment)).AsString(), LocalTime(moment)) << moment;
}

TEST_P(HostDateInZone, DropsFractions)
{
    Start();
    SetTimeZone(GetParam().zone);
    // Before 1970, before 2001 and after: seconds are rounded down.
    for (const double moment : {-86400.25, -1.5, -0.5, 0.25, 978307199.0625, 978307199.9375, 978307200.5,
                                1709215509.999, 1e9 + 0.001})
        EXPECT_EQ(Convert(DateSince1970(moment)).AsString(), LocalTime(moment)) << moment;
}

INSTANTIATE_TEST_SUITE_P(Zones, HostDateInZone, ::testing::ValuesIn(kZones), kNameOfRow);

TEST_F(DateToHost, FirstAndLastYearsHaveTheirFields)
{
    StartInUniversalTime();
    constexpr double kFirstMoment = -62135596800;
    constexpr double kLastMoment = 253402300799;
    EXPECT_EQ(Convert(DateSince1970(kFirstMoment)).AsString(), "0001-01-01 00:00:00");
    EXPECT_EQ(Convert(DateSince1970(kLastMoment)).AsString(), "9999-12-31 23:59:59");
    // Steps of 11 years and a month, through all months and both kinds of century.
    for (double moment = kFirstMoment; moment < kLastMoment; moment += 11 * 365.2425 * 86400 + 2700001)
        ASSERT_EQ(Convert(DateSince1970(moment)).AsString(), UniversalTime(moment)) << moment;
}

TEST_F(DateToHost, FixedOffsetsHoldInEveryYear)
{
    StartInUniversalTime();
    // Cocoa promises only whole minutes for such zones.
    for (const int offset : {-43200, -12600, -60, 0, 60, 19800, 50400}) {
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:offset]];
        for (const double moment : {-62135500000.0, -2.5e9, 0.0, 1709215509.0, 4e9, 253402200000.0})
            EXPECT_EQ(Convert(DateSince1970(moment)).AsString(), UniversalTime(moment + offset)) << offset;
    }
}

TEST_F(DateToHost, CalendarDateIsReadInTheDefaultZoneNotInItsOwn)
{
    StartInUniversalTime();
    NSCalendarDate *const date = [NSCalendarDate dateWithYear:2024
                                                        month:2
                                                          day:29
                                                         hour:14
                                                       minute:5
                                                       second:9
                                                     timeZone:[NSTimeZone timeZoneForSecondsFromGMT:3600]];
    EXPECT_EQ(Convert(date).AsString(), "2024-02-29 13:05:09");
}

TEST_F(DateToHost, IsMadeByTheConstructor)
{
    Host &host = StartInUniversalTime();
    const Value date = Convert(DateSince1970(kLeapDay));
    EXPECT_EQ(host.ClassOf(date), "Date");
    EXPECT_EQ(date.Code(), qzlhost::code::Date);
    EXPECT_EQ(host.References(date), 1);
    const std::vector<std::string> calls = ArgumentsOf(host, "Date.Constructor");
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_NE(calls[0].find(", 2024, 2, 29, 14, 5, 9"), std::string::npos) << calls[0];
    EXPECT_EQ(host.CallsOf("REALSetPropValueInteger"), 0);
    const std::vector<std::string> loads = ArgumentsOf(host, "REALLoadObjectMethod");
    ASSERT_EQ(loads.size(), 1u);
    EXPECT_NE(loads[0].find('"' + std::string(kConstructor) + '"'), std::string::npos) << loads[0];
}

TEST_F(DateToHost, WithoutTheConstructorSixPropertiesAreSetInOrder)
{
    Host &host = StartInUniversalTime([](Host &unloaded) { unloaded.LackMethod(kConstructor); });
    const Value date = Convert(DateSince1970(kLeapDay));
    EXPECT_EQ(date.AsString(), "2024-02-29 14:05:09");
    EXPECT_EQ(host.References(date), 1);
    const std::vector<std::string> calls = ArgumentsOf(host, "REALSetPropValueInteger");
    constexpr const char *kSettings[] = {"\"Year\", 2024", "\"Month\", 2",  "\"Day\", 29",
                                         "\"Hour\", 14",   "\"Minute\", 5", "\"Second\", 9"};
    ASSERT_EQ(calls.size(), std::size(kSettings));
    for (size_t index = 0; index < calls.size(); ++index)
        EXPECT_NE(calls[index].find(kSettings[index]), std::string::npos) << calls[index];
}

TEST_F(DateToHost, HostThatLoadsNoMethodsHasThePropertiesSet)
{
    StartInUniversalTime([](Host &unloaded) { unloaded.Lack("REALLoadObjectMethod"); });
    EXPECT_EQ(Convert(DateSince1970(kLeapDay)).AsString(), "2024-02-29 14:05:09");
}

TEST_F(DateToHost, WithoutConstructorAndSettersItIsStillADate)
{
    Host &host = StartInUniversalTime([](Host &unloaded) {
        unloaded.LackMethod(kConstructor);
        unloaded.Lack("REALSetPropValueInteger");
    });
    const Value date = Convert(DateSince1970(kLeapDay));
    EXPECT_EQ(host.ClassOf(date), "Date");
    EXPECT_EQ(host.AsksFor("REALSetPropValueInteger"), 6);
}

TEST_F(DateToHost, SettersThatAppearLateSetTheRest)
{
    Host &host = StartInUniversalTime([](Host &unloaded) {
        unloaded.LackMethod(kConstructor);
        unloaded.AnswerFrom("REALSetPropValueInteger", 4);
    });
    const Value date = Convert(DateSince1970(kLeapDay));
    EXPECT_EQ(host.CallsOf("REALSetPropValueInteger"), 3);
    EXPECT_EQ(host.Get(date, "Hour").AsInteger(), 14);
    EXPECT_EQ(host.Get(date, "Minute").AsInteger(), 5);
    EXPECT_EQ(host.Get(date, "Second").AsInteger(), 9);
}

TEST_F(DateToHost, HostWithoutDatesGivesNull)
{
    Host &host = StartInUniversalTime([](Host &unloaded) { unloaded.Fail("PluginNewInstance"); });
    EXPECT_EQ(NewVariantFromNSObject(DateSince1970(kLeapDay)), nullptr);
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 0);
    host.Fail("PluginNewInstance", false);
}

// How the fields of a host date are read, and what becomes of dates with missing or excessive fields.
#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/date_to_cocoa.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "tests/support/linked_test.h"
#include "tests/support/row_names.h"
#include "tests/support/trace.h"
#include "tests/support/wall_clock.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

const std::vector<std::string> kFieldNames = {"Year", "Month", "Day", "Hour", "Minute", "Second"};

/// Replaces the host's function for integer properties: reads the first `readable` of these fields.
struct FieldSource {
    static inline Fields fields;
    static inline size_t readable;
    static inline std::vector<std::string> asked;

    static bool Get(REALobject, const char *name, int64_t *value)
    {
        const size_t field = asked.size();
        asked.push_back(name);
        if (field >= readable)
            return false;
        *value = fields.at(field);
        return true;
    }
};

class DateFields : public LinkedTest {
protected:
    /// A host whose dates have the first `readable` of these fields, in range or not.
    Host &StartWithFields(const Fields &fields, size_t readable = 6)
    {
        SetTimeZone("UTC");
        FieldSource::fields = fields;
        FieldSource::readable = readable;
        return StartReplacing("REALGetPropValueInteger", reinterpret_cast<void *>(&FieldSource::Get));
    }

    Value NewDate() { return host().NewDate(2024, 2, 29, 14, 5, 9); }
};

struct OutOfRange {
    const char *name;
    Fields fields;
};

REALobject gRefusedDate;

bool GiveNullDate(REALobject, const char *name, REALobject *value)
{
    EXPECT_STREQ(name, "DateValue");
    *value = nullptr;
    return true;
}

/// Writes a date, without a reference, but returns failure.
bool RefuseDate(REALobject, const char *, REALobject *value)
{
    *value = gRefusedDate;
    return false;
}

/// A host that does not return the date of a variant.
struct HostRow {
    const char *name;
    void (*prepare)(Host &unloaded);
};

constexpr char kGetDate[] = "REALGetPropValueObject";

const HostRow kHostsWithoutTheDate[] = {
    {"LacksTheFunction", [](Host &unloaded) { unloaded.Lack(kGetDate); }},
    {"Fails", [](Host &unloaded) { unloaded.Fail(kGetDate); }},
    {"GivesNull",
     [](Host &unloaded) { unloaded.Replace(kGetDate, reinterpret_cast<void *>(&GiveNullDate)); }},
    {"RefusesTheDate",
     [](Host &unloaded) { unloaded.Replace(kGetDate, reinterpret_cast<void *>(&RefuseDate)); }},
};

class DateThatTheHostDoesNotGive : public DateFields, public ::testing::WithParamInterface<HostRow> {};
class DateThatCocoaNormalizes : public DateFields, public ::testing::WithParamInterface<OutOfRange> {};
class DateWithoutAField : public DateFields, public ::testing::WithParamInterface<size_t> {};

} // namespace

TEST_P(DateThatCocoaNormalizes, IsTheCLibrarysInstant)
{
    StartWithFields(GetParam().fields);
    const Value date = NewDate();

    NSCalendarDate *const converted = NewNSDate(ObjectOf(date));

    EXPECT_EQ([converted timeIntervalSince1970], static_cast<double>(UniversalInstant(GetParam().fields)));
}

INSTANTIATE_TEST_SUITE_P(Fields, DateThatCocoaNormalizes,
                         ::testing::Values(OutOfRange{"Month13", {2024, 13, 1, 0, 0, 0}},
                                           OutOfRange{"Day0", {2024, 3, 0, 0, 0, 0}},
                                           OutOfRange{"Day32", {2024, 1, 32, 0, 0, 0}},
                                           OutOfRange{"Day400", {2024, 3, 400, 0, 0, 0}},
                                           OutOfRange{"February29OfACommonYear", {2023, 2, 29, 0, 0, 0}},
                                           OutOfRange{"February30", {2024, 2, 30, 0, 0, 0}},
                                           OutOfRange{"Hour24", {2024, 12, 31, 24, 0, 0}},
                                           OutOfRange{"Hour25", {2024, 2, 28, 25, 0, 0}},
                                           OutOfRange{"Minute60", {2024, 2, 28, 23, 60, 0}},
                                           OutOfRange{"Second60", {2024, 2, 28, 23, 59, 60}},
                                           OutOfRange{"Second100000", {2024, 3, 1, 0, 0, 100000}}),
                         kNameOfRow);

TEST_F(DateFields, AreReadOnceEachInTheirOrder)
{
    StartWithFields({2024, 2, 29, 14, 5, 9});
    const Value date = NewDate();

    NSCalendarDate *const converted = NewNSDate(ObjectOf(date));

    EXPECT_NE(converted, nil);
    EXPECT_EQ(FieldSource::asked, kFieldNames);
}

TEST_F(DateFields, AreAllThatIsAskedOfTheHost)
{
    Host &host = Start();
    const Value date = NewDate();
    host.ClearTrace();

    EXPECT_NE(NewNSDate(ObjectOf(date)), nil);

    EXPECT_EQ(host.Trace().size(), 12u);
    EXPECT_EQ(host.CallsOf("Date field"), 6) << "one for each read";
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 6);
}

TEST_P(DateWithoutAField, IsNilAfterTheFieldsBeforeIt)
{
    const size_t readable = GetParam();
    Host &host = StartWithFields({2024, 2, 29, 14, 5, 9}, readable);
    const Value date = NewDate();

    EXPECT_EQ(NewNSDate(ObjectOf(date)), nil);

    const std::vector<std::string> expected(kFieldNames.begin(),
                                            kFieldNames.begin() + static_cast<std::ptrdiff_t>(readable) + 1);
    EXPECT_EQ(FieldSource::asked, expected);
    EXPECT_EQ(host.References(date), 1);
}

INSTANTIATE_TEST_SUITE_P(Fields, DateWithoutAField, ::testing::Range(size_t{0}, size_t{6}),
                         [](const auto &info) { return kFieldNames.at(info.param); });

TEST_F(DateFields, OfWhatIsNoDateGiveNil)
{
    Host &host = Start();
    const Value dictionary = host.NewDictionary();

    EXPECT_EQ(NewNSDate(ObjectOf(dictionary)), nil);

    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
}

TEST_F(DateFields, OfANullDateAreNotRead)
{
    Host &host = Start();
    EXPECT_EQ(NewNSDate(nullptr), nil);
    EXPECT_TRUE(host.Trace().empty());
    EXPECT_EQ(host.AsksFor("REALGetPropValueInteger"), 0);
}

TEST_F(DateFields, OnAHostThatCannotReadThemGiveNil)
{
    Host &host = StartLacking({"REALGetPropValueInteger"});
    const Value date = NewDate();
    EXPECT_EQ(NewNSDate(ObjectOf(date)), nil);
    EXPECT_EQ(GetVariantAsNSObject(ObjectOf(date)), nil);
    EXPECT_EQ(host.References(date), 1);
}

TEST_F(DateFields, AreReadAsSoonAsTheHostCanReadThem)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.AnswerFrom("REALGetPropValueInteger", 3); });
    const Value date = NewDate();
    EXPECT_EQ(NewNSDate(ObjectOf(date)), nil);
    EXPECT_EQ(NewNSDate(ObjectOf(date)), nil);
    EXPECT_NE(NewNSDate(ObjectOf(date)), nil);
    EXPECT_NE(NewNSDate(ObjectOf(date)), nil);
    EXPECT_EQ(host.AsksFor("REALGetPropValueInteger"), 3);
}

TEST_F(DateFields, OfADateVariantGiveTheDate)
{
    Host &host = Start();
    SetTimeZone("UTC");
    const Value date = NewDate();
    ASSERT_EQ(date.Code(), qzlhost::code::Date);

    const id converted = GetVariantAsNSObject(ObjectOf(date));

    ASSERT_TRUE([converted isKindOfClass:[NSCalendarDate class]]);
    EXPECT_EQ([converted timeIntervalSince1970],
              static_cast<double>(UniversalInstant({2024, 2, 29, 14, 5, 9})));
    EXPECT_EQ(host.CallsOf("REALGetPropValueObject"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 1);
    EXPECT_EQ(host.References(date), 1);
}

TEST_F(DateFields, OfADateVariantWhoseSecondIsMissingGiveNilAndReleaseTheDate)
{
    Host &host = StartWithFields({2024, 2, 29, 14, 5, 9}, 5);
    const Value date = NewDate();
    EXPECT_EQ(GetVariantAsNSObject(ObjectOf(date)), nil);
    EXPECT_EQ(FieldSource::asked.size(), 6u);
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 1);
    EXPECT_EQ(host.References(date), 1);
}

TEST_P(DateThatTheHostDoesNotGive, IsNotReadAndNothingIsGivenBack)
{
    Host &host = Start(2024.01, GetParam().prepare);
    const Value date = NewDate();
    gRefusedDate = ObjectOf(date);
    EXPECT_EQ(GetVariantAsNSObject(ObjectOf(date)), nil);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 0);
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 0);
}

INSTANTIATE_TEST_SUITE_P(Hosts, DateThatTheHostDoesNotGive, ::testing::ValuesIn(kHostsWithoutTheDate),
                         kNameOfRow);

TEST_F(DateFields, OfADateVariantAreReadBeforeTheDateIsGivenBack)
{
    Host &host = Start();
    const Value date = NewDate();
    host.ClearTrace();

    EXPECT_NE(GetVariantAsNSObject(ObjectOf(date)), nil);

    std::vector<std::string> expected(6, "REALGetPropValueInteger");
    expected.emplace_back("REALUnlockObject");
    EXPECT_EQ(FunctionsCalled(host, {"REALGetPropValueInteger", "REALUnlockObject"}), expected);
}

// The arguments with which Cocoa makes a date. Its result is the conversion's.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/replaced_method.h"
#include "tests/support/wall_clock.h"

using qzlhost::Host;

namespace {

/// The fields of every host date, in range or not.
Fields gFields;

bool AnswerField(qzlhost::Instance *, const char *name, int64_t *value)
{
    constexpr const char *kNames[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};
    for (size_t field = 0; field < gFields.size(); ++field)
        if (std::string_view(kNames[field]) == name)
            *value = gFields[field];
    return true;
}

/// The arguments of one call.
struct Question {
    Fields fields;
    NSTimeZone *zone;
};

std::vector<Question> gQuestions;
id gAnswer;

using MakeDate = id(id self, SEL selector, NSInteger year, NSUInteger month, NSUInteger day, NSUInteger hour,
                    NSUInteger minute, NSUInteger second, NSTimeZone *zone);

id NoteQuestion(id, SEL, NSInteger year, NSUInteger month, NSUInteger day, NSUInteger hour, NSUInteger minute,
                NSUInteger second, NSTimeZone *zone)
{
    const auto field = [](NSUInteger number) { return static_cast<int64_t>(number); };
    gQuestions.push_back({{year, field(month), field(day), field(hour), field(minute), field(second)}, zone});
    return gAnswer;
}

class DateArguments : public MemberConversion {
protected:
    /// Converts a date with these fields; Cocoa returns `gAnswer`.
    id ConvertFields(const Fields &fields)
    {
        gFields = fields;
        const SEL selector = @selector(dateWithYear:month:day:hour:minute:second:timeZone:);
        const ReplacedMethod<MakeDate> noted(class_getClassMethod([NSCalendarDate class], selector),
                                             &NoteQuestion);
        return Convert(host().NewDate(2024, 2, 29, 14, 5, 9));
    }

    Host &StartWithFields()
    {
        return Start({}, [](Host &unloaded) {
            unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&AnswerField));
        });
    }
};

} // namespace

TEST_F(DateArguments, AreTheFieldsAsTheyWereRead)
{
    StartWithFields();
    for (const Fields &fields :
         {Fields{2024, 2, 29, 14, 5, 9}, Fields{0, 0, 0, 0, 0, 0}, Fields{-5, -1, -2, -3, -4, -6},
          Fields{2024, 13, 32, 24, 60, 61}, Fields{1, INT64_MAX, 3, INT64_MIN, 5, INT64_MAX},
          Fields{INT64_MIN, INT64_MAX, INT64_MIN, 0x100000001, 0x100000002, 0x100000003}}) {
        gQuestions.clear();
        ConvertFields(fields);
        ASSERT_EQ(gQuestions.size(), 1u);
        EXPECT_EQ(gQuestions[0].fields, fields);
    }
}

TEST_F(DateArguments, HaveTheLocalTimeZone)
{
    StartWithFields();
    ConvertFields({2024, 2, 29, 14, 5, 9});
    ASSERT_EQ(gQuestions.size(), 1u);
    EXPECT_EQ(gQuestions[0].zone, [NSTimeZone localTimeZone]);
    EXPECT_NE(gQuestions[0].zone, [NSTimeZone defaultTimeZone]);
}

TEST_F(DateArguments, MakeWhatCocoaReturns)
{
    StartWithFields();
    gAnswer = [NSCalendarDate distantPast];
    EXPECT_EQ(ConvertFields({2024, 2, 29, 14, 5, 9}), gAnswer);
    gAnswer = nil;
    EXPECT_EQ(ConvertFields({2024, 2, 29, 14, 5, 9}), nil);
    EXPECT_EQ(gQuestions.size(), 2u);
}

// Times that no library of the family has methods to convert.
#include <optional>

#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/values.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class UnsuppliedTime : public MemberConversion, public ::testing::WithParamInterface<FamilyTime> {
protected:
    /// A new time in a host where the family has its class alone.
    Value StartWithTime()
    {
        Host &host = Start();
        family_.emplace(host);
        family_->OfferExceptions();
        family_->OfferTimeClass(GetParam());
        return host.New(GetParam().hostClass);
    }

private:
    std::optional<Family> family_;
};

} // namespace

TEST_P(UnsuppliedTime, EndsTheMemberWithCocoasExceptionForTheUnknownMessage)
{
    const Value time = StartWithTime();

    NSException *const raised = ExceptionOf(time);

    ASSERT_NE(raised, nil);
    EXPECT_TRUE([[raised name] isEqual:NSInvalidArgumentException]) << [[raised name] UTF8String];
    EXPECT_NE(std::string([[raised reason] UTF8String]).find(GetParam().toCocoa), std::string::npos)
        << [[raised reason] UTF8String];
    EXPECT_EQ(host().References(time), 1);
}

TEST_P(UnsuppliedTime, InADictionaryLeavesNothingBehind)
{
    const Value time = StartWithTime();
    const Value dictionary = NewDictionary(host(), {{"key", time}});

    EXPECT_TRUE([[ExceptionOf(dictionary) name] isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(host().References(time), 2) << "the test's and the Dictionary's";
    host().DictionarySet(dictionary, "key", 1);
    EXPECT_TRUE([Convert(dictionary) isEqual:@{@"key" : @1}]);
}

INSTANTIATE_TEST_SUITE_P(Kinds, UnsuppliedTime, ::testing::ValuesIn(kFamilyTimes),
                         [](const auto &info) { return std::string(info.param.hostClass); });

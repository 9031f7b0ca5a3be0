// Times of QuickTime and Core Media where no library of the family adds the methods that convert them.
#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class UnsuppliedTime : public MemberConversion, public ::testing::WithParamInterface<FamilyTime> {};

std::string TimeName(const ::testing::TestParamInfo<FamilyTime> &info)
{
    return info.param.hostClass;
}

} // namespace

TEST_P(UnsuppliedTime, EndsTheMemberWithCocoasExceptionForTheUnknownMessage)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    family.OfferTimeClass(GetParam());
    const Value time = host.New(GetParam().hostClass);

    NSException *const raised = ExceptionOf(time);

    ASSERT_NE(raised, nil);
    EXPECT_TRUE([[raised name] isEqual:NSInvalidArgumentException]) << [[raised name] UTF8String];
    EXPECT_NE(std::string([[raised reason] UTF8String]).find(GetParam().toCocoa), std::string::npos)
        << [[raised reason] UTF8String];
    EXPECT_EQ(host.References(time), 1);
}

TEST_P(UnsuppliedTime, InADictionaryLeavesNothingBehind)
{
    Host &host = Start();
    Family family(host);
    family.OfferExceptions();
    family.OfferTimeClass(GetParam());
    const Value time = host.New(GetParam().hostClass);
    const Value dictionary = host.NewDictionary();
    host.DictionarySet(dictionary, "key", time);

    EXPECT_TRUE([[ExceptionOf(dictionary) name] isEqual:NSInvalidArgumentException]);

    EXPECT_EQ(host.References(time), 2) << "the test's and the Dictionary's";
    host.DictionarySet(dictionary, "key", 1);
    EXPECT_TRUE([Convert(dictionary) isEqual:@{@"key" : @1}]);
}

INSTANTIATE_TEST_SUITE_P(Kinds, UnsuppliedTime, ::testing::ValuesIn(kFamilyTimes), TimeName);

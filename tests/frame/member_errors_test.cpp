// C++ exceptions out of the host while a member builds a string become host exceptions.
#include "tests/support/plugin_test.h"
#include "tests/support/row_names.h"
#include "tests/support/standard_exceptions.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class MemberGuard : public PluginTest, public ::testing::WithParamInterface<StandardRow> {};

} // namespace

TEST_P(MemberGuard, TurnsAStandardExceptionIntoAHostException)
{
    Host &host = Start({}, ThrowingBuilder::Install);
    const Value notification = host.New("NSNotificationQZL", {"a name"});
    host.ClearTrace();
    ThrowingBuilder::ThrowNext(GetParam().thrower);

    ExpectException([&] { host.Get(notification, "Name"); }, GetParam().className, GetParam().message);

    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 1);
    EXPECT_EQ(host.Get(notification, "Name").AsString(), "a name") << "the next time";
}

INSTANTIATE_TEST_SUITE_P(Rows, MemberGuard, ::testing::ValuesIn(kStandardRows), kNameOfRow);

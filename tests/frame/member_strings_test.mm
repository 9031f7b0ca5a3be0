// What members do when the host fails while it reads or builds a string for them.
#import <Foundation/Foundation.h>

#include "tests/support/plugin_test.h"
#include "tests/support/standard_exceptions.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

class MemberGuard : public PluginTest, public ::testing::WithParamInterface<StandardRow> {};
using MemberStrings = PluginTest;

int64_t RaiseForLength(REALstring)
{
    [NSException raise:@"QZLRaisedByTheHost" format:@"on purpose"];
    return 0;
}

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

INSTANTIATE_TEST_SUITE_P(Rows, MemberGuard, ::testing::ValuesIn(kStandardRows), RowName);

TEST_F(MemberStrings, AreUnlockedWhenTheHostRaisesWhileItTellsTheirLength)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.Lack("REALGetStringCFString");
        unloaded.ReplaceMethod("LenB( s as string ) as integer", reinterpret_cast<void *>(&RaiseForLength));
    });
    const Value name("a name");
    host.ClearTrace();

    const Value notification = host.New("NSNotificationQZL", {name});

    EXPECT_EQ(host.CallsOf("REALLockString"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
    EXPECT_EQ(host.References(name), 1);
    EXPECT_EQ(HandleOf<id>(host, notification), nil);
}

// The lock on a string that a member reads, if the host raises a Cocoa exception meanwhile.
#import <Foundation/Foundation.h>

#include "tests/support/host_declarations.h"
#include "tests/support/plugin_test.h"
#include "tests/support/raising.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using MemberStringLock = PluginTest;

} // namespace

TEST_F(MemberStringLock, IsGivenBackWhenTheHostRaisesForTheLength)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.Lack("REALGetStringCFString");
        unloaded.ReplaceMethod(kLenB, reinterpret_cast<void *>(&RaiseInHost));
    });
    const Value name("a name");
    host.ClearTrace();

    const Value notification = host.New("NSNotificationQZL", {name});

    EXPECT_EQ(host.CallsOf("REALLockString"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
    EXPECT_EQ(host.References(name), 1);
    EXPECT_EQ(HandleOf<id>(host, notification), nil);
}

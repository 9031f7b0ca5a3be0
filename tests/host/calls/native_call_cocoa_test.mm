// Cocoa exceptions that pass through calls and callbacks made at run time.
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include "host/calls/native_call.h"

namespace qzlhost {
namespace {

const NativeSignature kNoArguments{NativeType::Int64, {}};

int64_t Raise()
{
    [NSException raise:@"TestException" format:@"from a function"];
    return 0;
}

/// The name of the exception that a call of `function` raises; null for none.
NSString *NameOfRaised(void *function)
{
    @try {
        CallNative(function, kNoArguments, nullptr);
    } @catch (NSException *exception) {
        return [exception name];
    }
    return nil;
}

TEST(NativeCocoaException, OfACalleeArrivesAtTheCaller)
{
    NSAutoreleasePool *pool = [NSAutoreleasePool new];
    EXPECT_TRUE([NameOfRaised(reinterpret_cast<void *>(Raise)) isEqualToString:@"TestException"]);
    [pool release];
}

TEST(NativeCocoaException, PassesThroughACallback)
{
    NSAutoreleasePool *pool = [NSAutoreleasePool new];
    const NativeCallback callback(kNoArguments, [](const NativeValue *) {
        return CallNative(reinterpret_cast<void *>(Raise), kNoArguments, nullptr);
    });
    EXPECT_TRUE([NameOfRaised(callback.Function()) isEqualToString:@"TestException"]);
    [pool release];
}

} // namespace
} // namespace qzlhost

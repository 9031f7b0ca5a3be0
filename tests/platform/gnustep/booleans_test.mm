// kCFBooleanTrue and kCFBooleanFalse, retain and release.
#include "tests/platform/gnustep/port_testing.h"

namespace {

id gTrueSeenAtLoad;
id gFalseSeenAtLoad;

id ObjectOf(CFTypeRef reference)
{
    return static_cast<id>(const_cast<void *>(reference));
}

} // namespace

@interface SeesBooleansAtLoad : NSObject
@end

@implementation SeesBooleansAtLoad

+ (void)load
{
    gTrueSeenAtLoad = ObjectOf(kCFBooleanTrue);
    gFalseSeenAtLoad = ObjectOf(kCFBooleanFalse);
}

@end

TEST(Booleans, AreTheObjectsThatNSNumberReturns)
{
    EXPECT_EQ(ObjectOf(kCFBooleanTrue), [NSNumber numberWithBool:YES]);
    EXPECT_EQ(ObjectOf(kCFBooleanFalse), [NSNumber numberWithBool:NO]);
    EXPECT_NE(ObjectOf(kCFBooleanTrue), ObjectOf(kCFBooleanFalse));
    EXPECT_TRUE([ObjectOf(kCFBooleanTrue) boolValue]);
    EXPECT_FALSE([ObjectOf(kCFBooleanFalse) boolValue]);
}

TEST(Booleans, AreNotTheNumbersOneAndZero)
{
    EXPECT_NE(ObjectOf(kCFBooleanTrue), [NSNumber numberWithInt:1]);
    EXPECT_NE(ObjectOf(kCFBooleanFalse), [NSNumber numberWithInt:0]);
}

TEST(Booleans, AreThereBeforeMain)
{
    EXPECT_EQ(gTrueSeenAtLoad, [NSNumber numberWithBool:YES]);
    EXPECT_EQ(gFalseSeenAtLoad, [NSNumber numberWithBool:NO]);
}

TEST(Retain, AddsOneAndReleaseTakesIt)
{
    NSObject *const object = [[NSObject alloc] init];
    EXPECT_EQ(CFRetain(object), object);
    EXPECT_EQ([object retainCount], 2U);
    CFRelease(object);
    EXPECT_EQ([object retainCount], 1U);
    [object release];
}

TEST(Retain, IgnoresNull)
{
    EXPECT_EQ(CFRetain(nullptr), nullptr);
    CFRelease(nullptr);
}

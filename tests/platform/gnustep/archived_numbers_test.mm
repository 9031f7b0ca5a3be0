// Numbers that go through an archive, as those of a user info do between processes.
#include "tests/platform/gnustep/port_testing.h"

#include <cfloat>
#include <climits>

namespace {

id ThroughAnArchive(id object)
{
    return [NSUnarchiver unarchiveObjectWithData:[NSArchiver archivedDataWithRootObject:object]];
}

} // namespace

TEST(ArchivedNumbers, BooleansComeBackAsTheTwoBooleans)
{
    for (const BOOL value : {YES, NO}) {
        NSNumber *const boolean = [NSNumber numberWithBool:value];
        EXPECT_EQ(ThroughAnArchive(boolean), boolean);
    }
}

TEST(ArchivedNumbers, OthersComeBackWithTypeAndValue)
{
    for (NSNumber *number in [NSArray
             arrayWithObjects:[NSNumber numberWithInt:0], [NSNumber numberWithInt:1],
                              [NSNumber numberWithChar:1], [NSNumber numberWithUnsignedChar:200],
                              [NSNumber numberWithInt:-1000000000], [NSNumber numberWithUnsignedInt:UINT_MAX],
                              [NSNumber numberWithLongLong:LLONG_MIN],
                              [NSNumber numberWithLongLong:(1LL << 53) + 1],
                              [NSNumber numberWithUnsignedLongLong:ULLONG_MAX],
                              [NSNumber numberWithFloat:0.1f], [NSNumber numberWithDouble:0.1],
                              [NSNumber numberWithDouble:DBL_MAX], [NSNumber numberWithDouble:1], nil]) {
        NSNumber *const read = ThroughAnArchive(number);
        EXPECT_STREQ([read objCType], [number objCType]);
        EXPECT_TRUE([read isEqual:number]) << [[number description] UTF8String];
    }
}

TEST(ArchivedNumbers, BooleansInCollectionsComeBackToo)
{
    NSNumber *const yes = [NSNumber numberWithBool:YES];
    NSDictionary *const read =
        ThroughAnArchive([NSDictionary dictionaryWithObject:[NSArray arrayWithObject:yes] forKey:@"key"]);
    EXPECT_EQ([[read objectForKey:@"key"] objectAtIndex:0], yes);
}

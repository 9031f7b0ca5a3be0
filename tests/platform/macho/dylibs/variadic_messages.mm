// Sends a message with a variable number of arguments to a class of the platform.
#import <Foundation/Foundation.h>

@interface NSString (OfTheTest)
+ (NSString *)stringWithFormat:(NSString *)format, ...;
@end

extern "C" __attribute__((visibility("default"))) NSString *format()
{
    return [NSString stringWithFormat:@"%@ %d %.1f", @"one", 2, 3.5];
}

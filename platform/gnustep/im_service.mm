// The instant-messaging service's notification centre.
#import <InstantMessage/IMService.h>

@implementation IMService

+ (NSNotificationCenter *)notificationCenter
{
    static NSNotificationCenter *const center = [[NSNotificationCenter alloc] init];
    return center;
}

@end

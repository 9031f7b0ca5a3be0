// Posting to a distributed notification centre with options.
#import <Foundation/Foundation.h>

@implementation NSDistributedNotificationCenter (CocoaportOptions)

- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
                     options:(NSDistributedNotificationOptions)options
{
    const BOOL atOnce = (options & NSDistributedNotificationDeliverImmediately) != 0;
    [self postNotificationName:name object:object userInfo:userInfo deliverImmediately:atOnce];
}

@end

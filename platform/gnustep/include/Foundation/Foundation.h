// GNUstep's Foundation, and what macOS's Foundation has beyond it.
#include_next <Foundation/Foundation.h>

#ifndef COCOAPORT_FOUNDATION_H
#define COCOAPORT_FOUNDATION_H

#ifdef __OBJC__

#include <CoreFoundation/CoreFoundation.h>

enum {
    NSDistributedNotificationDeliverImmediately = 1UL << 0,
    NSDistributedNotificationPostToAllSessions = 1UL << 1
};
typedef NSUInteger NSDistributedNotificationOptions;

@interface NSDistributedNotificationCenter (CocoaportOptions)

/// Posts; with NSDistributedNotificationDeliverImmediately, to suspended receivers, too. There is one
/// session, so NSDistributedNotificationPostToAllSessions changes nothing.
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
                     options:(NSDistributedNotificationOptions)options;

@end

#endif

#endif

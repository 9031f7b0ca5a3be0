// The instant-messaging service, reduced to its notification centre.
#ifndef QZL_IMSERVICE_H
#define QZL_IMSERVICE_H

#import <Foundation/Foundation.h>

@interface IMService : NSObject

/// The service's own centre, one per process, borrowed. On any thread.
+ (NSNotificationCenter *)notificationCenter;

@end

#endif

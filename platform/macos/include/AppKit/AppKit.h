// The part of Apple's AppKit that the library uses.
#ifndef QZL_APPKIT_H
#define QZL_APPKIT_H

#import <Foundation/Foundation.h>

@interface NSWorkspace : NSObject
+ (NSWorkspace *)sharedWorkspace;
- (NSNotificationCenter *)notificationCenter;
@end

#endif

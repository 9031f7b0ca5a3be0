// The Cocoa object behind a host observer: what notification centres know and call.
#pragma once

#import <Foundation/Foundation.h>

#include "frame/host_types.h"

@interface NSNotificationObserver : NSObject {
    /// The host instance that owns this observer; not retained, never cleared.
    REALobjectStruct *target;
}
/// The receiver itself, with one more retain.
- (id)copyWithZone:(struct _NSZone *)zone;
/// Called by a centre on the posting thread, which waits until the host's handler has returned.
- (void)GotNotification:(NSNotification *)notification;
- (void)GotNotificationOnMainThread:(NSNotification *)notification;
- (id)initWithTarget:(REALobjectStruct *)instance;
@end

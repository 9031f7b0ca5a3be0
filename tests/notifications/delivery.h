// Brings a notification to an observer without a centre: GNUstep's catches what its observers raise.
#pragma once

#include "host/host.h"

#ifdef __OBJC__
#import <Foundation/Foundation.h>

/// Methods of the library's observer, which is found by name.
@interface NSObject (QZLDelivery)
- (id)initWithTarget:(void *)instance;
- (void)GotNotification:(NSNotification *)notification;
@end

/// Sends a notification as a centre would. What the observer raises passes.
void DeliverTo(id observer);
#endif

/// The same to the object behind an instance.
void Deliver(qzlhost::Host &host, const qzlhost::Value &observer);

// Delivers a notification to an observer without a centre: GNUstep's centres catch what their observers
// raise.
#pragma once

#include "host/host.h"

#ifdef __OBJC__
#import <Foundation/Foundation.h>

/// Methods of the library's observer class, which the tests look up by name.
@interface NSObject (QZLDelivery)
- (id)initWithTarget:(void *)instance;
- (void)GotNotification:(NSNotification *)notification;
@end

/// Sends the observer a notification as a centre would. Exceptions of the observer pass.
void DeliverTo(id observer);
#endif

/// Sends it to the Cocoa object of a host observer.
void Deliver(qzlhost::Host &host, const qzlhost::Value &observer);

// What a program does with the library's classes. Results are autoreleased.
#pragma once

#include "check/host.h"

/// An instance after a call of its plain "Constructor".
Instance Constructed(NSString *className);

/// An observer that keeps what it got in Delivered().
Instance NewObserver();

/// What observers got, in its order: the name, the object if there is one, and the user info's
/// "state" if there is one.
NSMutableArray *Delivered();

/// Waits until `count` notifications were delivered, or ten seconds have gone by. Returns what was delivered
/// until then, joined with commas; it is then forgotten.
NSString *Await(NSUInteger count);

/// Lets the main thread's run loop work for a time.
void RunLoopFor(double seconds);

void AddObserver(Instance center, Instance observer, NSString *name, Instance object = nil);
void Post(Instance center, NSString *name, Instance object = nil, Instance userInfo = nil);

/// The class's shared "defaultCenter".
Instance DefaultCenter(NSString *className);

/// A notification that "notificationWithName" makes.
Instance NewNotification(Instance object, Instance userInfo = nil);

/// What "objectVariant" returns for a notification of this Cocoa object.
Instance VariantOf(id object);

/// Runs the body on another thread, and the main thread's run loop until it has ended.
void OnThreads(int count, void (*body)());

/// Whether this macOS has the disc-recording framework.
bool HasRecording();

inline NSString *const kRecording = @"DRNotificationCenterQZL";
inline NSString *const kCenter = @"NSNotificationCenterQZL";
inline NSString *const kDistributed = @"NSDistributedNotificationCenterQZL";

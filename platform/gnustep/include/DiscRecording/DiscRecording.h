// The disc-recording notification centre, which is not an NSNotificationCenter.
#ifndef COCOAPORT_DISCRECORDING_H
#define COCOAPORT_DISCRECORDING_H

#import <Foundation/Foundation.h>

@interface DRNotificationCenter : NSObject {
    NSNotificationCenter *center;
}

/// The calling thread's centre, the same on each call, borrowed; it lives as long as the thread.
+ (DRNotificationCenter *)currentRunLoopCenter;

/// Registers the observer, which is not retained. A nil name stands for every name, a nil object for every
/// object.
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object;

/// Withdraws the observer's registrations for the name and object; nil stands for all.
- (void)removeObserver:(id)observer name:(NSString *)name object:(id)object;

@end

#endif

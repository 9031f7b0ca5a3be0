// Moves each notification to the main thread and raises the host's event for it there.
#include "notifications/NSNotificationObserver.h"

#include <pthread.h>

#include "frame/cocoa_exceptions.h"
#include "notifications/observer_event.h"

@implementation NSNotificationObserver

- (id)copyWithZone:(struct _NSZone *)zone
{
    (void)zone;
    return [self retain];
}

- (void)GotNotification:(NSNotification *)notification
{
    if (pthread_main_np() == 1)
        [self GotNotificationOnMainThread:notification];
    else
        [self performSelectorOnMainThread:@selector(GotNotificationOnMainThread:)
                               withObject:notification
                            waitUntilDone:YES];
}

- (void)GotNotificationOnMainThread:(NSNotification *)notification
{
    if (target == nullptr)
        return;
    @try {
        RaiseGotNotification(target, notification);
    } @catch (NSException *exception) {
        // No host code is running that could receive it. Its description may raise, too, and a poster on
        // another thread is waiting.
        DropCocoaExceptions([&] { NSLog(@"%@", exception); });
    }
}

- (id)initWithTarget:(REALobjectStruct *)instance
{
    self = [super init];
    if (self != nil)
        target = instance;
    return self;
}

@end

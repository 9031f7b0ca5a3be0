// An observer and a notification class by hand.
#include "bench/floor_classes.h"

#import <Foundation/Foundation.h>

#include <pthread.h>

#include "bench/host_functions.h"

/// What another plugin of the family may add.
@interface NSException (FloorFamily)
+ (CFMutableDictionaryRef)GetInstancesDictionaryQZL;
+ (void)PrepareNSExceptionQZL;
@end

namespace {

REALeventRecord gObserverEvents[] = {
    {.declaration = "GotNotification(notification as NSNotificationQZL)"},
};

REALclassDefinition gObserverClass = {
    .name = "FloorNotificationObserver",
    .dataSize = 16,
    .events = gObserverEvents,
};

/// Whether the family is there is asked whenever an instance comes or goes.
bool FamilyIsThere()
{
    return [NSException respondsToSelector:@selector(GetInstancesDictionaryQZL)] ||
           [NSException respondsToSelector:@selector(PrepareNSExceptionQZL)];
}

void ConstructNotification(REALobject)
{
    if (FamilyIsThere())
        std::abort();
}

void DestructNotification(REALobject instance)
{
    if (FamilyIsThere())
        std::abort();
    [FloorHandle(instance) release];
}

REALclassDefinition gNotificationClass = {
    .name = "FloorNotification",
    .dataSize = 16,
    .constructor = ConstructNotification,
    .destructor = DestructNotification,
};

} // namespace

@interface QZLFloorObserver : NSObject {
@public
    REALobject target;
}
@end

@implementation QZLFloorObserver
- (void)GotNotification:(NSNotification *)notification
{
    if (pthread_main_np() == 1)
        [self GotNotificationOnMainThread:notification];
}

- (void)GotNotificationOnMainThread:(NSNotification *)notification
{
    const auto handler = reinterpret_cast<void (*)(REALobject, REALobject)>(
        gHost.getEventInstance(target, reinterpret_cast<void *>(gObserverEvents[0].key)));
    if (handler == nullptr)
        return;
    const REALobject wrapper = gHost.newInstance("FloorNotification");
    FloorHandle(wrapper) = [notification retain];
    handler(target, wrapper);
    gHost.unlockObject(wrapper);
}
@end

void RegisterFloorClasses()
{
    gHost.registerClass(&gObserverClass);
    gHost.registerClass(&gNotificationClass);
}

NSObject *NewFloorObserver(REALobject target)
{
    QZLFloorObserver *const observer = [[QZLFloorObserver alloc] init];
    observer->target = target;
    return observer;
}

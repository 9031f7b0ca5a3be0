// The distributed notification centre: posting with options, and delivery as on macOS.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <deque>
#include <mutex>

@implementation NSDistributedNotificationCenter (CocoaportOptions)

- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
                     options:(NSDistributedNotificationOptions)options
{
    const BOOL atOnce = (options & NSDistributedNotificationDeliverImmediately) != 0;
    [self postNotificationName:name object:object userInfo:userInfo deliverImmediately:atOnce];
}

@end

namespace {

using RemoveMethod = void (*)(id center, SEL selector, id observer, NSString *name, NSString *object);

RemoveMethod gRemove;

/// A notification that the daemon has sent.
struct Arrival {
    id center;
    id observer; // not retained: the centre's observers are not
    SEL selector;
    NSNotification *notification; // retained
};

std::mutex gMutex;
std::deque<Arrival> gArrivals;

bool TakeArrival(Arrival &arrival)
{
    const std::lock_guard lock(gMutex);
    if (gArrivals.empty())
        return false;
    arrival = gArrivals.front();
    gArrivals.pop_front();
    return true;
}

bool Matches(NSString *wanted, NSString *text)
{
    return wanted == nil || [wanted isEqual:text];
}

/// GNUstep's own removal; then drops what has arrived for the observer but is not delivered.
void Remove(id center, SEL selector, id observer, NSString *name, NSString *object)
{
    gRemove(center, selector, observer, name, object);
    const std::lock_guard lock(gMutex);
    std::erase_if(gArrivals, [&](const Arrival &arrival) {
        const bool isRemoved = arrival.center == center && arrival.observer == observer &&
                               Matches(name, [arrival.notification name]) &&
                               Matches(object, [arrival.notification object]);
        if (isRemoved)
            [arrival.notification release];
        return isRemoved;
    });
}

} // namespace

/// Delivers on the main thread, from its run loop. GNUstep would deliver on any thread, during any request to
/// the daemon: an observer would receive notifications while it is being removed.
@interface CocoaportDelivery : NSObject
@end

@implementation CocoaportDelivery

+ (void)load
{
    const Method method = class_getInstanceMethod([NSDistributedNotificationCenter class],
                                                  @selector(removeObserver:name:object:));
    gRemove = reinterpret_cast<RemoveMethod>(method_setImplementation(method, reinterpret_cast<IMP>(Remove)));
}

+ (void)deliver
{
    for (Arrival arrival; TakeArrival(arrival);) {
        [arrival.notification autorelease];
        [arrival.observer performSelector:arrival.selector withObject:arrival.notification];
    }
}

@end

@implementation NSDistributedNotificationCenter (CocoaportDelivery)

/// Receives what the daemon sends; replaces GNUstep's own.
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSData *)info
                    selector:(NSString *)selector
                          to:(uint64_t)observer
{
    NSNotification *const notification =
        [NSNotification notificationWithName:name
                                      object:object
                                    userInfo:[NSUnarchiver unarchiveObjectWithData:info]];
    {
        const std::lock_guard lock(gMutex);
        gArrivals.push_back(
            {self, reinterpret_cast<id>(observer), NSSelectorFromString(selector), [notification retain]});
    }
    NSString *const mode = [[NSRunLoop currentRunLoop] currentMode];
    if ([NSThread isMainThread] && ![mode isEqualToString:NSConnectionReplyMode])
        [CocoaportDelivery deliver];
    else
        [CocoaportDelivery performSelectorOnMainThread:@selector(deliver)
                                            withObject:nil
                                         waitUntilDone:NO
                                                 modes:[NSArray arrayWithObject:NSDefaultRunLoopMode]];
}

@end

// What a program does with the library's classes.
#include "check/programs.h"

#include <objc/runtime.h>
#include <unistd.h>

#include "check/text.h"

namespace {

int gRunning = 0;

Instance Autoreleased(Instance result)
{
    return [result autorelease];
}

void KeepDelivered(Instance, Instance notification)
{
    const HostString name = Call<HostString>(@"NSNotificationQZL", "Name", notification, int64_t{0});
    NSNotification *const cocoa = HandleOf(notification);
    NSMutableString *const text = [NSMutableString stringWithString:TextOfString([name autorelease])];
    if ([cocoa object] != nil)
        [text appendString:Text({@" ", [cocoa object]})];
    if (NSString *const state = [[cocoa userInfo] objectForKey:@"state"])
        [text appendString:Text({@" ", state})];
    [Delivered() addObject:text];
}

} // namespace

/// The body of a thread.
@interface Worker : NSObject {
@public
    void (*body)();
}
- (void)work:(id)unused;
@end

@implementation Worker
- (void)work:(id)__attribute__((unused)) unused
{
    @autoreleasepool {
        body();
    }
    __atomic_sub_fetch(&gRunning, 1, __ATOMIC_RELEASE);
}
@end

Instance Constructed(NSString *className)
{
    const Instance instance = NewInstance(className);
    Call(className, "Constructor", instance);
    return instance;
}

Instance NewObserver()
{
    const Instance observer = Constructed(@"NSNotificationObserverQZL");
    observer->gotNotification = KeepDelivered;
    return observer;
}

NSMutableArray *Delivered()
{
    static NSMutableArray *const delivered = [[NSMutableArray alloc] init];
    return delivered;
}

bool HasRecording()
{
    return objc_getClass("DRNotificationCenter") != Nil;
}

void RunLoopFor(double seconds)
{
    [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:seconds]];
    // Without a source the run loop returns at once.
    usleep(1000);
}

NSString *Await(NSUInteger count)
{
    NSDate *const end = [NSDate dateWithTimeIntervalSinceNow:10];
    while ([Delivered() count] < count && [end timeIntervalSinceNow] > 0)
        RunLoopFor(0.02);
    NSString *const text = [Delivered() componentsJoinedByString:@", "];
    [Delivered() removeAllObjects];
    return text;
}

void AddObserver(Instance center, Instance observer, NSString *name, Instance object)
{
    Call(center->type,
         "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
         center, observer, name == nil ? nil : String(name), object);
}

void Post(Instance center, NSString *name, Instance object, Instance userInfo)
{
    Call(center->type, "postNotificationName(name as string, theObject as variant, userInfo as dictionary)",
         center, String(name), object, userInfo);
}

Instance DefaultCenter(NSString *className)
{
    const char *const declaration = [className isEqual:kCenter]
                                        ? "defaultCenter as NSNotificationCenterQZL"
                                        : "defaultCenter as NSDistributedNotificationCenterQZL";
    return Autoreleased(Call<Instance>(className, declaration));
}

Instance NewNotification(Instance object, Instance userInfo)
{
    return Autoreleased(Call<Instance>(@"NSNotificationQZL",
                                       "notificationWithName(name as string, theObject as variant = nil, "
                                       "userInfo as dictionary = nil) as NSNotificationQZL",
                                       String(@"Check"), object, userInfo));
}

Instance VariantOf(id object)
{
    const Instance wrapper = NewInstance(@"NSNotificationQZL");
    Call(wrapper->type, "Constructor(handle as integer)", wrapper,
         [NSNotification notificationWithName:@"Check" object:object userInfo:nil]);
    return Autoreleased(Call<Instance>(wrapper->type, "objectVariant", wrapper, int64_t{0}));
}

void OnThreads(int count, void (*body)())
{
    // The run loop and the centre are there before the threads: GNUstep cannot make them on two at once.
    RunLoopFor(0);
    [NSNotificationCenter defaultCenter];
    __atomic_store_n(&gRunning, count, __ATOMIC_RELEASE);
    for (int i = 0; i < count; ++i) {
        Worker *const worker = [[[Worker alloc] init] autorelease];
        worker->body = body;
        [NSThread detachNewThreadSelector:@selector(work:) toTarget:worker withObject:nil];
    }
    while (__atomic_load_n(&gRunning, __ATOMIC_ACQUIRE) > 0)
        RunLoopFor(0.01);
}

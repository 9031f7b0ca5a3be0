// Records what the notification centres of this system do where it was not known, beside what they do on
// Linux.
#include <objc/runtime.h>
#include <pthread.h>

#include "check/groups.h"
#include "check/programs.h"

namespace {

NSNotificationCenter *Center()
{
    return [NSNotificationCenter defaultCenter];
}

/// What an observer of every name gets while the body posts, unless it raises.
template <typename Body>
NSString *Posting(Body body)
{
    AddObserver(DefaultCenter(kCenter), NewObserver(), nil);
    body();
    return Text({@"delivered ", Await(0)});
}

template <typename Body>
NSString *Doing(Body body)
{
    body();
    return @"nothing raised";
}

} // namespace

void RecordNotificationFacts()
{
    NSString *const noName = nil;
    Fact(@"postNotificationName: nil object:",
         @"NSInvalidArgumentException: Tried to post a notification with no name.",
         [&] { return Posting([&] { [Center() postNotificationName:noName object:nil]; }); });
    Fact(@"postNotificationName: nil ... userInfo:",
         @"NSInvalidArgumentException: Tried to post a notification with no name.",
         [&] { return Posting([&] { [Center() postNotificationName:noName object:nil userInfo:nil]; }); });
    Fact(@"postNotification: nil", @"NSInvalidArgumentException: Tried to post a nil notification.",
         [&] { return Posting([&] { [Center() postNotification:(NSNotification *)noName]; }); });
    Fact(@"notificationWithName: nil", @"nil as its name", [&] {
        return Text(
            {[[NSNotification notificationWithName:noName object:nil userInfo:nil] name], @" as its name"});
    });
    Fact(@"Between processes: nil name, options:", @"NSInvalidArgumentException: invalid notification name",
         [&] {
             return Doing([&] {
                 [[NSDistributedNotificationCenter defaultCenter] postNotificationName:noName
                                                                                object:nil
                                                                              userInfo:nil
                                                                               options:1];
             });
         });
    Fact(@"Between processes: nil name, immediately",
         @"NSInvalidArgumentException: invalid notification name", [&] {
             return Doing([&] {
                 [[NSDistributedNotificationCenter defaultCenter] postNotificationName:noName
                                                                                object:nil
                                                                              userInfo:nil
                                                                    deliverImmediately:YES];
             });
         });
    Fact(@"addObserver: nil", @"NSInvalidArgumentException: Nil observer passed to addObserver ...", [&] {
        return Doing([&] {
            [Center() addObserver:noName selector:@selector(GotNotification:) name:@"Check" object:nil];
        });
    });
    Fact(@"removeObserver: nil", @"nothing raised",
         [&] { return Doing([&] { [Center() removeObserver:noName]; }); });
    Fact(@"An observer without the method is taken", @"no", [&] {
        return YesOrNo([ResultOf([] {
            [Center() addObserver:[NSArray array]
                         selector:@selector(GotNotification:)
                             name:@"Check"
                           object:nil];
            return @"taken";
        }) isEqual:@"taken"]);
    });
    // An array raises when it is asked for an element at the place of a notification's address.
    Fact(@"An observer's exception meets the poster", @"nothing raised", [&] {
        [Center() addObserver:[NSArray array] selector:@selector(objectAtIndex:) name:@"Raise" object:nil];
        return Doing([&] { [Center() postNotificationName:@"Raise" object:nil]; });
    });
    Fact(@"notificationCenterForType: unknown", @"NSInvalidArgumentException: Unknown center type (unknown)",
         [] {
             return Text({[[NSDistributedNotificationCenter notificationCenterForType:@"unknown"] class]});
         });
    Fact(@"NSLocalNotificationCenterType", @"NSLocalNotificationCenterType",
         [] { return NSLocalNotificationCenterType; });
    Fact(@"The local centre is the default one", @"yes", [] {
        return YesOrNo(
            [NSDistributedNotificationCenter notificationCenterForType:NSLocalNotificationCenterType] ==
            [NSDistributedNotificationCenter defaultCenter]);
    });
    Fact(@"pthread_main_np, main and other thread", @"1, 0", [] {
        static int onOther;
        OnThreads(1, [] { onOther = pthread_main_np(); });
        return Text({ @(pthread_main_np()), @", ", @(onOther) });
    });
    Fact(@"A freed class comes back at its address", nil, [] {
        const Class first = objc_allocateClassPair([NSObject class], "CheckFirst", 0);
        objc_disposeClassPair(first);
        const Class second = objc_allocateClassPair([NSObject class], "CheckSecond", 0);
        objc_disposeClassPair(second);
        return YesOrNo(first == second);
    });
}

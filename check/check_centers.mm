// Notifications within the process: through each centre, from the main thread and from others.
#include <objc/runtime.h>

#include "check/groups.h"
#include "check/programs.h"

namespace {

/// Cocoa's centres within the process. Nil for one whose framework is not there.
const struct {
    NSString *name;
    NSNotificationCenter *(*find)();
    /// Whether GNUstep posts to all processes, and delivers later.
    bool isOfEveryProcess = false;
} kCenters[] = {
    {@"the default centre", [] { return [NSNotificationCenter defaultCenter]; }},
    {@"NSWorkspace's centre",
     []() -> NSNotificationCenter * {
         return [[objc_getClass("NSWorkspace") performSelector:@selector(sharedWorkspace)]
             performSelector:@selector(notificationCenter)];
     },
     true},
    {@"InstantMessage's centre",
     []() -> NSNotificationCenter * {
         const Class service = objc_getClass("IMService");
         return [service respondsToSelector:@selector(notificationCenter)]
                    ? [service performSelector:@selector(notificationCenter)]
                    : nil;
     }},
};

NSNotificationCenter *gCenter = nil;
bool gWasOnMainThread = false, gHasHandled = false, gPosterWaited = false;

void NoteThread(Instance, Instance)
{
    gWasOnMainThread = [NSThread isMainThread];
    RunLoopFor(0.05);
    gHasHandled = true;
    [Delivered() addObject:@"FromThread"];
}

/// A centre of the library's class with this Cocoa centre in place of the default one.
Instance CenterOf(NSNotificationCenter *cocoa)
{
    const Instance center = NewInstance(kCenter);
    center->data[0] = reinterpret_cast<uint64_t>([cocoa retain]);
    return center;
}

/// Posts through a centre, once with an observer and once after it was removed. Returns the names of what the
/// observer got.
NSString *Through(Instance center)
{
    const Instance observer = NewObserver();
    AddObserver(center, observer, @"Greeting");
    Post(center, @"Greeting");
    NSString *const first = Await(1);
    Call(center->type, "removeObserver(observer as NSNotificationObserverQZL)", center, observer);
    Post(center, @"Greeting");
    RunLoopFor(0.05);
    return [[Text({first, Await(0)}) componentsSeparatedByString:@" "] objectAtIndex:0];
}

/// Posts on another thread. Returns where the handler runs, and whether the poster waits for it.
NSString *FromThread(Instance center)
{
    const Instance observer = NewObserver();
    observer->gotNotification = NoteThread;
    AddObserver(center, observer, @"FromThread");
    gWasOnMainThread = gHasHandled = false;
    OnThreads(1, [] {
        [gCenter postNotificationName:@"FromThread" object:nil];
        gPosterWaited = gHasHandled;
    });
    Await(1);
    return Text({gWasOnMainThread ? @"main thread" : @"another thread",
                 gPosterWaited ? @", the poster waited" : @", the poster went on"});
}

} // namespace

void CheckCenters()
{
    for (const auto &cocoa : kCenters) {
        gCenter = cocoa.find();
        Check(Text({@"Through ", cocoa.name}), gCenter == nil ? @"no centre" : @"Greeting",
              [] { return gCenter == nil ? @"no centre" : Through(CenterOf(gCenter)); });
        const auto fromThread = [] { return gCenter == nil ? @"no centre" : FromThread(CenterOf(gCenter)); };
        if (cocoa.isOfEveryProcess)
            Fact(@"NSWorkspace's centre, another thread", @"main thread, the poster went on", fromThread);
        else
            Check(@"  from another thread", gCenter == nil ? @"no centre" : @"main thread, the poster waited",
                  fromThread);
    }
    Check(@"A post arrives before it returns", @"Greeting", [] {
        const Instance center = DefaultCenter(kCenter), observer = NewObserver();
        AddObserver(center, observer, @"Greeting");
        Post(center, @"Greeting");
        return Await(0);
    });
    Check(@"An observer of every name gets any", @"One, Two", [] {
        const Instance center = Constructed(kCenter), observer = NewObserver();
        AddObserver(center, observer, nil);
        Post(center, @"One");
        Post(center, @"Two");
        return Await(0);
    });
    Check(@"An observer of one object gets no other's", @"Greeting <wrapper>", [] {
        const Instance center = Constructed(kCenter), observer = NewObserver();
        const Instance object = NewNotification(nil);
        AddObserver(center, observer, @"Greeting", object);
        Post(center, @"Greeting", NewNotification(nil));
        Post(center, @"Greeting", object);
        return [Await(0) hasPrefix:Text({@"Greeting ", HandleOf(object)})] ? @"Greeting <wrapper>"
                                                                           : @"something else";
    });
    Check(@"An observer that has gone", @"gets nothing", [] {
        const Instance center = Constructed(kCenter);
        @autoreleasepool {
            AddObserver(center, NewObserver(), @"Greeting");
        }
        Post(center, @"Greeting");
        NSString *const got = Await(0);
        return [got length] == 0 ? @"gets nothing" : got;
    });
    Check(@"A notification of the program's own arrives", @"Check lamp", [] {
        const Instance center = Constructed(kCenter), observer = NewObserver();
        AddObserver(center, observer, @"Check");
        Call(kCenter, "postNotification(notification as NSNotificationQZL)", center,
             NewNotification(Variant(code::String, String(@"lamp"))));
        return Await(0);
    });
    Fact(@"InstantMessage is there", @"yes", [] { return YesOrNo(objc_getClass("IMService") != Nil); });
    Fact(@"DiscRecording is there", @"yes", [] { return YesOrNo(HasRecording()); });
    Check(@"The disc-recording centre takes an observer", @"nothing raised", [] {
        const Instance center = Constructed(kRecording), observer = NewObserver();
        AddObserver(center, observer, @"DRDeviceAppearedNotification");
        Call(
            center->type,
            "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
            center, observer, HostString(nil), Instance(nil));
        return Text({TakeException(), @" raised"});
    });
}

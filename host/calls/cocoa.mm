// What the host needs of Cocoa, for files in plain C++.
#include "host/calls/cocoa.h"

#include <thread>

#include <unistd.h>

#import <Foundation/Foundation.h>

namespace qzlhost {

namespace {

/// How many of the host's pools the thread has.
thread_local int gPoolDepth = 0;

} // namespace

void WarmUpCocoa()
{
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [NSRunLoop currentRunLoop];
    [NSNotificationCenter defaultCenter];
    // Initialises the application's class. On another thread that would hang while this one reads the user's
    // defaults.
    [@"" performSelectorOnMainThread:@selector(self) withObject:nil waitUntilDone:NO];
    // Cocoa becomes multi-threaded here, while nothing else runs.
    std::thread([] {
        RegisterThreadWithCocoa();
        NSAutoreleasePool *const threadPool = [[NSAutoreleasePool alloc] init];
        [NSRunLoop currentRunLoop];
        [threadPool release];
    }).join();
    [pool release];
}

void HideArgumentsFromCocoa(const char *program)
{
    char *arguments[] = {const_cast<char *>(program), nullptr};
    GSInitializeProcess(1, arguments, environ);
}

void RegisterThreadWithCocoa()
{
    GSRegisterCurrentThread();
}

void *PushPool()
{
    ++gPoolDepth;
    return [[NSAutoreleasePool alloc] init];
}

void PopPool(void *pool)
{
    [static_cast<NSAutoreleasePool *>(pool) release];
    --gPoolDepth;
}

CocoaScope::CocoaScope()
{
    if (gPoolDepth == 0) {
        RegisterThreadWithCocoa();
        pool_ = PushPool();
    }
}

CocoaScope::~CocoaScope()
{
    if (pool_)
        PopPool(pool_);
}

void RunRunLoop(double seconds)
{
    NSDate *const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    if (![[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:end])
        [NSThread sleepUntilDate:end];
}

} // namespace qzlhost

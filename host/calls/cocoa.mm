// What the host needs of Cocoa and of the platform, for files in plain C++.
#include "host/calls/cocoa.h"

#include <thread>

#include <unistd.h>

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

namespace qzlhost {

void WarmUpCocoa()
{
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [NSRunLoop currentRunLoop];
    [NSNotificationCenter defaultCenter];
    // Prepares the application's class, whose run loop modes it asks for. On another thread that would hang
    // while this one reads the user's defaults.
    [@"" performSelectorOnMainThread:@selector(self) withObject:nil waitUntilDone:NO];
    // Cocoa's own change to several threads happens here, while nothing else runs.
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
    return [[NSAutoreleasePool alloc] init];
}

void PopPool(void *pool)
{
    [static_cast<NSAutoreleasePool *>(pool) release];
}

void RunRunLoop(double seconds)
{
    NSDate *const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    if (![[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:end])
        [NSThread sleepUntilDate:end];
}

void *NewWorkspaceCenter()
{
    return [[[NSWorkspace sharedWorkspace] notificationCenter] retain];
}

CFStringRef NewCFString(std::u16string_view text)
{
    return CFStringCreateWithCharacters(nullptr, reinterpret_cast<const uint16_t *>(text.data()),
                                        static_cast<int64_t>(text.size()));
}

bool FSRefOfPath(const std::string &path, FSRef *out)
{
    NSString *const string = [NSString stringWithUTF8String:path.c_str()];
    NSURL *const url = string ? [NSURL fileURLWithPath:string] : nil;
    return url && CFURLGetFSRef(reinterpret_cast<CFURLRef>(url), out) != 0;
}

std::optional<std::string> PathOfFSRef(const FSRef *reference)
{
    uint8_t path[4096] = {};
    if (FSRefMakePath(reference, path, sizeof path) != 0)
        return std::nullopt;
    return std::string(reinterpret_cast<const char *>(path));
}

} // namespace qzlhost

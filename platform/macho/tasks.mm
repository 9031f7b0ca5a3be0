// Tasks (NSTask) that run Mach-O programs.
#include "platform/macho/tasks.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

namespace {

std::string gRunner;
bool (*gIsProgram)(const std::string &path);
/// The platform's own method.
void (*gLaunch)(NSTask *task, SEL selector);

} // namespace

// The platform's method, which its header does not declare.
@interface NSTask (LaunchPath)
/// The absolute path of the file that is launched; nil without one.
- (NSString *)validatedLaunchPath;
@end

@interface NSTask (MachOPrograms)
- (void)launchThroughRunner;
@end

@implementation NSTask (MachOPrograms)

- (void)launchThroughRunner
{
    NSString *const path = [self validatedLaunchPath];
    if (path == nil || !gIsProgram([path fileSystemRepresentation])) {
        gLaunch(self, @selector(launch));
        return;
    }
    NSArray *const arguments = [[[self arguments] retain] autorelease];
    NSArray *const program = [NSArray arrayWithObject:path];
    [self setLaunchPath:[NSString stringWithUTF8String:gRunner.c_str()]];
    [self setArguments:arguments == nil ? program : [program arrayByAddingObjectsFromArray:arguments]];
    @try {
        gLaunch(self, @selector(launch));
    } @finally {
        // The setters refuse to change a task that runs.
        ASSIGN(_launchPath, path);
        ASSIGN(_arguments, arguments);
    }
}

@end

namespace macho {

void StartProgramsWith(const std::string &runner, bool (*isProgram)(const std::string &path))
{
    @autoreleasepool {
        gRunner = runner;
        gIsProgram = isProgram;
        // Tasks are of a subclass of NSTask. It may inherit the method; as the runtime does not pass a
        // changed method on to subclasses, it then gets one of its own.
        const Class tasks = [[[[NSTask alloc] init] autorelease] class];
        const Method launch = class_getInstanceMethod(tasks, @selector(launch));
        const IMP replacement = class_getMethodImplementation(tasks, @selector(launchThroughRunner));
        gLaunch = reinterpret_cast<void (*)(NSTask *, SEL)>(method_getImplementation(launch));
        if (!class_addMethod(tasks, @selector(launch), replacement, method_getTypeEncoding(launch)))
            method_setImplementation(launch, replacement);
    }
}

} // namespace macho

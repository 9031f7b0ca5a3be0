// notifications-check: says what holds of the library on this Mac.
#include "check/groups.h"
#include "check/host.h"
#include "check/host_functions.h"
#include "check/processes.h"
#include "check/report.h"

namespace {

constexpr const char *kUsage =
    "Usage: notifications-check [--json] [--report FILE] [LIBRARY]\n\n"
    "Loads the library (libNotificationsQZL.dylib beside this program), plays a small host for it\n"
    "and prints what holds.\n\n"
    "  --json          print the report instead, as JSON\n"
    "  --report FILE   write the report to a file, too: the lines, the log, the system\n"
    "  --version       print the version\n\n"
    "Exit status: 0 if everything holds, 1 if not, 2 for wrong arguments.\n";

/// A group of checks. It runs in a process of its own, so that a crash ends no other group.
struct Group {
    /// What the command line calls it, and the output.
    NSString *name, *title;
    void (*run)();
};

/// In the order in which they run.
const Group kGroups[] = {
    {@"library", @"The library and its classes", CheckLibrary},
    {@"centers", @"Notifications within the process", CheckCenters},
    {@"values", @"Values to Cocoa and back", CheckValues},
    {@"files", @"Files to Cocoa and back", CheckFiles},
    {@"wrappers", @"Wrappers of Cocoa objects", CheckWrappers},
    {@"exceptions", @"Exceptions", CheckExceptions},
    {@"processes", @"Notifications between processes", CheckProcesses},
    {@"threads", @"Many threads, many notifications", CheckThreads},
    {@"notification-facts", @"What the system's notification centres answer", RecordNotificationFacts},
    {@"value-facts", @"What the system's values answer", RecordValueFacts},
};

NSString *gProgram = nil, *gLibrary = nil;

struct Arguments {
    bool asJson = false;
    NSString *report = nil;
    /// For a process that runs a group, or posts: which, and how many lines are left out.
    NSString *group = nil, *skipped = nil, *post = nil;
};

/// Fills in the arguments; false for wrong ones.
bool Parse(NSArray *given, Arguments &arguments)
{
    NSEnumerator *const rest = [given objectEnumerator];
    for (NSString *argument = [rest nextObject]; argument != nil; argument = [rest nextObject]) {
        NSString **const value = [argument isEqual:@"--report"]  ? &arguments.report
                                 : [argument isEqual:@"--group"] ? &arguments.group
                                 : [argument isEqual:@"--post"]  ? &arguments.post
                                                                 : nullptr;
        if (value != nullptr) {
            *value = [rest nextObject];
            if (*value == nil)
                return false;
            if (value == &arguments.group)
                arguments.skipped = [rest nextObject];
        } else if ([argument isEqual:@"--json"])
            arguments.asJson = true;
        else if ([argument hasPrefix:@"-"] || gLibrary != nil)
            return false;
        else
            gLibrary = [argument retain];
    }
    return true;
}

/// Runs the named group, or posts, in this process.
int RunPart(const Arguments &arguments)
{
    static NSString *const problem = [LoadLibrary(gLibrary, FindHostFunction) retain];
    const auto reportProblem = [] { Check(kLoaded, kFiveClasses, [] { return problem; }); };
    if (arguments.post != nil)
        PostToOtherProcess(arguments.post);
    for (const Group &group : kGroups) {
        if ([arguments.group isEqual:group.name])
            RunGroup(problem == nil ? group.run : reportProblem, [arguments.skipped intValue]);
    }
    return 0;
}

/// How a group's process ended.
NSString *EndOf(NSTask *task)
{
    const bool isSignal = [task terminationReason] == NSTaskTerminationReasonUncaughtSignal;
    if (isSignal && [task terminationStatus] == kTookTooLong)
        return @"did not end in time";
    return Text({ isSignal ? @"ended by signal " : @"ended with status ", @([task terminationStatus]) });
}

/// The lines of a group, run in a process of its own; in another one from the line after a crash.
NSArray *LinesOf(const Group &group, NSMutableArray *log)
{
    NSString *const file = [NSTemporaryDirectory()
        stringByAppendingPathComponent:[[NSProcessInfo processInfo] globallyUniqueString]];
    NSMutableArray *const lines = [NSMutableArray array];
    for (bool hasEnded = false; !hasEnded;) {
        [[NSFileManager defaultManager] createFileAtPath:file contents:nil attributes:nil];
        NSTask *const task = RunAgain(@[ @"--group", group.name, [@([lines count]) description] ],
                                      [NSFileHandle fileHandleForWritingAtPath:file]);
        [task waitUntilExit];
        NSArray *const read = ReadLines([NSData dataWithContentsOfFile:file], log);
        [lines addObjectsFromArray:read];
        hasEnded = [task terminationStatus] == 0 && [task terminationReason] == NSTaskTerminationReasonExit;
        if (hasEnded)
            break;
        NSMutableDictionary *unfinished = [read lastObject];
        if (unfinished == nil || [unfinished objectForKey:@"came"] != nil) {
            // It ended between two lines, so there is no line to go on with.
            unfinished = [NSMutableDictionary dictionaryWithDictionary:@{
                @"kind" : @"check",
                @"what" : @"The group runs to its end",
                @"expected" : @"it ends"
            }];
            [lines addObject:unfinished];
            hasEnded = true;
        }
        [unfinished setObject:EndOf(task) forKey:@"came"];
    }
    [[NSFileManager defaultManager] removeItemAtPath:file error:nullptr];
    return lines;
}

int RunAll(const Arguments &arguments)
{
    NSMutableDictionary *const report =
        [NSMutableDictionary dictionaryWithDictionary:DescriptionOfSystem(gLibrary)];
    NSMutableArray *const all = [NSMutableArray array], *const log = [NSMutableArray array];
    if (!arguments.asJson)
        PrintSystem(report);
    for (const Group &group : kGroups) {
        NSArray *const lines = LinesOf(group, log);
        for (NSMutableDictionary *line in lines)
            [line setObject:group.title forKey:@"group"];
        [all addObjectsFromArray:lines];
        if (!arguments.asJson)
            PrintGroup(group.title, lines);
        if (!Holds([lines objectAtIndex:0]) &&
            [[[lines objectAtIndex:0] objectForKey:@"what"] isEqual:kLoaded])
            break;
    }
    [report setObject:all forKey:@"lines"];
    [report setObject:log forKey:@"log"];
    [report setObject:Summary(all) forKey:@"summary"];
    return Finish(report, arguments.asJson, arguments.report);
}

} // namespace

NSTask *RunAgain(NSArray *arguments, NSFileHandle *output)
{
    NSTask *const task = [[[NSTask alloc] init] autorelease];
    NSFileHandle *const shown = output == nil ? [NSFileHandle fileHandleWithNullDevice] : output;
    [task setLaunchPath:gProgram];
    [task setArguments:[arguments arrayByAddingObject:gLibrary]];
    [task setStandardOutput:shown];
    [task setStandardError:shown];
    [task launch];
    return task;
}

int main(int count, char **words)
{
    @autoreleasepool {
        NSMutableArray *const given = [NSMutableArray array];
        for (int i = 0; i < count; ++i)
            [given addObject:[NSString stringWithUTF8String:words[i]]];
        NSString *const name = [given objectAtIndex:0];
        // Without a slash the shell found it along PATH.
        gProgram = [[name rangeOfString:@"/"].length == 0 ? [[NSBundle mainBundle] executablePath]
                                                          : [[NSURL fileURLWithPath:name] path] retain];
        [given removeObjectAtIndex:0];
        Arguments arguments;
        const bool isRight = Parse(given, arguments);
        if (gLibrary == nil)
            gLibrary = [[[gProgram stringByDeletingLastPathComponent]
                stringByAppendingPathComponent:@QZL_LIBRARY] retain];
        if ([given containsObject:@"--version"] || [given containsObject:@"--help"]) {
            Print([given containsObject:@"--help"] ? @(kUsage) : @"notifications-check " QZL_VERSION "\n");
            return 0;
        }
        if (!isRight) {
            PrintError(@(kUsage));
            return 2;
        }
        return arguments.group != nil || arguments.post != nil ? RunPart(arguments) : RunAll(arguments);
    }
}

// Prints lines, and makes the report of them.
#include "check/report.h"

#include <unistd.h>

#include "check/text.h"

namespace {

constexpr NSUInteger kWidth = 80, kColumn = 41, kMarkWidth = 6;
// Codes of terminals.
constexpr int kBold = 1, kRed = 31, kGreen = 32;

bool UsesColour()
{
    return isatty(1) == 1 && [[[NSProcessInfo processInfo] environment] objectForKey:@"NO_COLOR"] == nil;
}

NSString *Coloured(NSString *text, int colour)
{
    return UsesColour() ? Text({ @"\x1b[", @(colour), @"m", text, @"\x1b[0m" }) : text;
}

/// The text, cut to the width with an ellipsis.
NSString *Cut(NSString *text, NSUInteger width)
{
    return [text length] <= width ? text : Text({[text substringToIndex:width - 1], @"…"});
}

bool DiffersFromLinux(NSDictionary *line)
{
    return [[line objectForKey:@"kind"] isEqual:@"fact"] && [[line objectForKey:@"expected"] length] != 0 &&
           ![[line objectForKey:@"expected"] isEqual:[line objectForKey:@"came"]];
}

/// The first line that a command prints; "unknown" if there is none, or no such command.
NSString *OutputOf(NSString *command, NSArray *arguments)
{
    NSString *text = nil;
    @try {
        NSTask *const task = [[[NSTask alloc] init] autorelease];
        NSPipe *const pipe = [NSPipe pipe];
        [task setLaunchPath:command];
        [task setArguments:arguments];
        [task setStandardOutput:pipe];
        [task setStandardError:[NSFileHandle fileHandleWithNullDevice]];
        [task launch];
        NSData *const output = [[pipe fileHandleForReading] readDataToEndOfFile];
        [task waitUntilExit];
        text = [[[NSString alloc] initWithData:output encoding:NSUTF8StringEncoding] autorelease];
    } @catch (NSException *) {
    }
    return [text length] == 0 ? @"unknown" : [[text componentsSeparatedByString:@"\n"] objectAtIndex:0];
}

} // namespace

NSDictionary *DescriptionOfSystem(NSString *libraryPath)
{
    NSString *const sum = [[OutputOf(@"/usr/bin/shasum", @[ @"-a", @"256", libraryPath ])
        componentsSeparatedByString:@" "] objectAtIndex:0];
    return @{
        @"version" : @QZL_VERSION,
        @"system" : [[NSProcessInfo processInfo] operatingSystemVersionString],
        @"architecture" : @QZL_ARCHITECTURE,
        @"machine" : OutputOf(@"/usr/bin/uname", @[ @"-m" ]),
        @"translated" : OutputOf(@"/usr/sbin/sysctl", @[ @"-n", @"sysctl.proc_translated" ]),
        @"library" : [libraryPath lastPathComponent],
        @"sha256" : sum
    };
}

bool Holds(NSDictionary *line)
{
    return [[line objectForKey:@"kind"] isEqual:@"fact"] ||
           [[line objectForKey:@"expected"] isEqual:[line objectForKey:@"came"]];
}

void Print(NSString *text)
{
    [[NSFileHandle fileHandleWithStandardOutput] writeData:[text dataUsingEncoding:NSUTF8StringEncoding]];
}

void PrintError(NSString *text)
{
    [[NSFileHandle fileHandleWithStandardError] writeData:[text dataUsingEncoding:NSUTF8StringEncoding]];
}

void PrintSystem(NSDictionary *system)
{
    Print(Text({@"notifications-check ", [system objectForKey:@"version"],
                @": ", [system objectForKey:@"library"], @", ", [system objectForKey:@"architecture"], @"\n",
                [system objectForKey:@"system"], @", ", [system objectForKey:@"machine"], @"\n"}));
}

void PrintGroup(NSString *title, NSArray *lines)
{
    Print(Text({@"\n", Coloured(title, kBold), @"\n"}));
    for (NSDictionary *line in lines) {
        NSString *const came = [line objectForKey:@"came"], *const expected = [line objectForKey:@"expected"];
        const bool isFact = [[line objectForKey:@"kind"] isEqual:@"fact"];
        NSString *const mark = isFact        ? @" -   "
                               : Holds(line) ? Coloured(@" ok  ", kGreen)
                                             : Coloured(@" FAIL", kRed);
        NSString *const what = [line objectForKey:@"what"];
        const NSUInteger width = [what length] < kColumn ? kColumn : [what length];
        Print(Text({mark, @" ", [what stringByPaddingToLength:width withString:@" " startingAtIndex:0], @" ",
                    Cut(came, kWidth - kMarkWidth - width - 1), @"\n"}));
        if (!Holds(line))
            Print(Text({@"         expected: ", expected, @"\n         came:     ", came, @"\n"}));
        else if (DiffersFromLinux(line))
            Print(Text({@"         on Linux: ", expected, @"\n"}));
    }
}

NSString *Summary(NSArray *lines)
{
    NSUInteger checks = 0, failures = 0, facts = 0, differences = 0;
    for (NSDictionary *line in lines) {
        const bool isFact = [[line objectForKey:@"kind"] isEqual:@"fact"];
        ++(isFact ? facts : checks);
        failures += Holds(line) ? 0 : 1;
        differences += DiffersFromLinux(line) ? 1 : 0;
    }
    return Text({
        @(checks), checks == 1 ? @" check: " : @" checks: ", @(checks - failures), @" hold, ", @(failures),
            failures == 1 ? @" fails. " : @" fail. ", @(facts), @" facts, ", @(differences),
            @" of them other than on Linux."
    });
}

int Finish(NSDictionary *report, bool asJson, NSString *file)
{
    NSData *const json = [NSJSONSerialization dataWithJSONObject:report
                                                         options:NSJSONWritingPrettyPrinted
                                                           error:nullptr];
    if (asJson)
        [[NSFileHandle fileHandleWithStandardOutput] writeData:json];
    Print(asJson ? @"\n" : Text({@"\n", [report objectForKey:@"summary"], @"\n"}));
    if (file != nil && ![json writeToFile:file atomically:YES]) {
        PrintError(Text({@"The report could not be written to ", file, @"\n"}));
        return 1;
    }
    for (NSDictionary *line in [report objectForKey:@"lines"]) {
        if (!Holds(line))
            return 1;
    }
    return 0;
}

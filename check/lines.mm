// Writes the lines of a group, and reads them again.
#include "check/lines.h"

#include <unistd.h>

namespace {

/// Begins a line of the output; other lines are the log.
NSString *const kMark = @"\x1e";

int gSkipped = 0;

void Write(NSDictionary *record)
{
    NSData *const json = [NSJSONSerialization dataWithJSONObject:record options:0 error:nullptr];
    NSMutableData *const line = [NSMutableData dataWithData:[kMark dataUsingEncoding:NSUTF8StringEncoding]];
    [line appendData:json];
    [line appendBytes:"\n" length:1];
    [[NSFileHandle fileHandleWithStandardOutput] writeData:line];
}

} // namespace

void RunGroup(void (*run)(), int skipped)
{
    gSkipped = skipped;
    alarm(kSecondsOfGroup);
    run();
}

bool BeginLine(NSString *kind, NSString *what, NSString *expected)
{
    if (gSkipped > 0) {
        --gSkipped;
        return false;
    }
    Write(@{@"kind" : kind, @"what" : what, @"expected" : expected});
    return true;
}

void EndLine(NSString *came)
{
    Write(@{@"came" : came == nil ? @"nil" : WithoutHome(came)});
}

NSArray *ReadLines(NSData *written, NSMutableArray *log)
{
    // The log may hold any bytes; each of them is a character of Latin-1.
    NSString *const text = [[[NSString alloc] initWithData:written
                                                  encoding:NSISOLatin1StringEncoding] autorelease];
    NSMutableArray *const lines = [NSMutableArray array];
    for (NSString *line in [text componentsSeparatedByString:@"\n"]) {
        NSData *const bytes = [line dataUsingEncoding:NSISOLatin1StringEncoding];
        NSDictionary *record = nil;
        if ([line hasPrefix:kMark])
            record = [NSJSONSerialization
                JSONObjectWithData:[bytes subdataWithRange:NSMakeRange(1, [bytes length] - 1)]
                           options:0
                             error:nullptr];
        if ([record objectForKey:@"what"] != nil) {
            [lines addObject:[NSMutableDictionary dictionaryWithDictionary:record]];
        } else if (record != nil) {
            [[lines lastObject] addEntriesFromDictionary:record];
        } else if ([line length] != 0) {
            NSString *const utf8 = [[[NSString alloc] initWithData:bytes
                                                          encoding:NSUTF8StringEncoding] autorelease];
            [log addObject:WithoutHome(utf8 == nil ? line : utf8)];
        }
    }
    return lines;
}

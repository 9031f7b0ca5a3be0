// Captures Foundation's log.
#include "tests/support/log_capture.h"

#import <Foundation/Foundation.h>

namespace {

/// Guarded by the lock under which Foundation calls the handler.
std::vector<std::string> gLines;
NSLog_printf_handler *gOuter;

void Take(NSString *message)
{
    const std::string line = [message UTF8String];
    const size_t prefixEnd = line.find("] ");
    gLines.push_back(prefixEnd == std::string::npos ? line : line.substr(prefixEnd + 2));
}

} // namespace

LogCapture::LogCapture()
{
    gOuter = _NSLog_printf_handler;
    _NSLog_printf_handler = Take;
    // The process's first log reads the user defaults, which post notifications.
    NSLog(@"first");
    gLines.clear();
}

LogCapture::~LogCapture()
{
    _NSLog_printf_handler = gOuter;
}

std::vector<std::string> LogCapture::Lines() const
{
    return gLines;
}

// Counts Cocoa objects with Foundation's own allocation statistics.
#include "tests/support/cocoa_objects.h"

#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#include <objc/runtime.h>

void CountCocoaObjects()
{
    GSDebugAllocationActive(YES);
    // Foundation miscounts a class whose first objects are made on several threads at once.
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [NSNotification notificationWithName:@"First" object:nil];
    [pool release];
}

void MakeLastFileError()
{
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [[NSFileManager defaultManager] createDirectoryAtPath:@"" attributes:nil];
    [pool release];
}

int LiveCocoaObjects(const std::string &className)
{
    const Class counted = objc_getClass(className.c_str());
    return counted == Nil ? 0 : GSDebugAllocationCount(counted);
}

// This program as a process of its own.
#pragma once

#import <Foundation/Foundation.h>

/// Starts the program again with the arguments and the same library. Its output goes to the handle, or is
/// discarded if that is nil. Autoreleased.
NSTask *RunAgain(NSArray *arguments, NSFileHandle *output);

/// What the second process of a check does: posts a notification of this name.
void PostToOtherProcess(NSString *name);

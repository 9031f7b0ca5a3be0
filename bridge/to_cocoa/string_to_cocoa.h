// Host strings become Cocoa strings.
#pragma once

#include "frame/host_types.h"

@class NSString;

/// An autoreleased Cocoa string of a host string. Nil for null, and if the bytes are no text in the string's
/// encoding. Raw bytes are read as Mac Roman.
NSString *NewNSString(REALstring string);

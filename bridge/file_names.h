// File names as the file system stores them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

/// The name in decomposed form, or unchanged if it cannot be copied; with one retain for the caller.
CFStringRef CreateDecomposedName(CFStringRef name) __attribute__((cf_returns_retained));

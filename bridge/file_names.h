// Names of files as the file system keeps them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

/// The name in decomposed form, or as it is where it cannot be copied; with one retain for the caller.
CFStringRef CreateDecomposedName(CFStringRef name) __attribute__((cf_returns_retained));

// Host instances that wrap Core Foundation objects.
// Called on the thread on which the host called in. Cocoa exceptions pass.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "frame/host_types.h"

/// Instance data of a wrapper of a Core Foundation object.
struct CFWrapperData {
    /// The wrapped object with one retain that belongs to the instance, or null.
    CFTypeRef handle;
    /// The class's own.
    void *unused;
    /// `kCFWrapperSignature`, or the instance is not to be filled. The class's constructor sets it.
    int64_t signature;
};
static_assert(sizeof(CFWrapperData) == 24);

inline constexpr int64_t kCFWrapperSignature = 0x52424346;

/// A new instance of the host class, or of "CFObjectQZL" where there is none, with one reference for the
/// caller. Not registered. Null when there is neither class, and when the instance does not carry the
/// signature.
REALobject NewCFWrapper(CFTypeRef object, const char *hostClassName);

/// The host class for a Core Foundation object's type.
const char *CFWrapperClassName(CFTypeRef object);

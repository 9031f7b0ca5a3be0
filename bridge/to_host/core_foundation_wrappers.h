// Host instances that wrap Core Foundation objects. Called on the host's thread. Cocoa exceptions pass.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "frame/host_types.h"

/// Instance data of a wrapper of a Core Foundation object.
struct CFWrapperData {
    /// The wrapped object with one retain that belongs to the instance, or null.
    CFTypeRef handle;
    /// Reserved for the class itself.
    void *unused;
    /// `kCFWrapperSignature`, which the class's constructor sets. An instance without it is not filled.
    int64_t signature;
};
static_assert(sizeof(CFWrapperData) == 24);

inline constexpr int64_t kCFWrapperSignature = 0x52424346;

/// A new instance of the host class, or of "CFObjectQZL" if there is none, with one reference for the caller.
/// Not registered. Null if the host has neither class, and if the instance lacks the signature.
REALobject NewCFWrapper(CFTypeRef object, const char *hostClassName);

/// The host class for a Core Foundation object's type.
const char *CFWrapperClassName(CFTypeRef object);

// Host instances that wrap Cocoa and Core Foundation objects: their instance data, their making, their end.
// Called on the thread on which the host called in. Cocoa exceptions pass.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

#include "frame/host_types.h"

/// Instance data of a wrapper of a Cocoa object, in this library's classes and in the family's.
struct WrapperData {
    /// The wrapped object with one retain that belongs to the instance, or nil.
    id handle;
};
static_assert(sizeof(WrapperData) == 8);

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

/// Bytes of the host's own in each instance, before the instance data.
inline constexpr size_t kInstanceHeaderSize = 48;

/// The instance data of an instance, which must not be null.
template <typename Data>
Data *InstanceData(REALobject instance)
{
    return reinterpret_cast<Data *>(reinterpret_cast<char *>(instance) + kInstanceHeaderSize);
}

/// The handle of a wrapper, borrowed; nil for a null instance.
inline id WrapperHandle(REALobject instance)
{
    return instance == nullptr ? nil : InstanceData<WrapperData>(instance)->handle;
}

/// Makes the object, whose retain the instance takes over, the handle of the instance, and enters the pair in
/// the registry. A nil object is stored, too, but not entered.
void AdoptHandle(REALobject instance, id retained);

/// The wrapper that the registry knows for the object, or a new instance of the host class, registered; with
/// one reference for the caller. Null for nil and where the host has no such class.
REALobject NewRegisteredWrapper(id object, const char *hostClassName);

/// A new instance of the host class named after the object's class or the nearest superclass that has one,
/// with one reference for the caller. Not registered. Null where no class of the chain has a host class, or
/// when the object is not of `requiredClass`.
REALobject NewNSObjectQZL(id object, Class requiredClass);

/// A new instance of the host class, or of "CFObjectQZL" where there is none, with one reference for the
/// caller. Not registered. Null when there is neither class, and when the instance does not carry the
/// signature.
REALobject NewCFWrapper(CFTypeRef object, const char *hostClassName);

/// The host class for a Core Foundation object's type.
const char *CFWrapperClassName(CFTypeRef object);

/// Constructor hook of the classes whose instances wrap a Cocoa object.
void WrapperConstructorHook(REALobject instance);

/// Destructor hook of the same classes: forgets the handle in the registry, releases it and clears it. After
/// a Cocoa exception the handle stays.
void WrapperDestructorHook(REALobject instance);

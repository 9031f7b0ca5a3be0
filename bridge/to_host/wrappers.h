// Host instances that wrap Cocoa objects: how they are made, and how they end. Called on the host's thread.
// Cocoa exceptions pass.
#pragma once

#include <objc/objc.h>

#include <cstddef>

#include "frame/host_types.h"

/// The name of the host class for objects of a Cocoa class.
class HostClassName {
public:
    explicit HostClassName(Class cocoaClass);
    explicit HostClassName(const char *name);

    /// Null for a class without a name or with one that is too long.
    const char *Get() const { return text_[0] == '\0' ? nullptr : text_; }

private:
    static constexpr size_t kLongestClassName = 199;
    char text_[kLongestClassName + sizeof "QZL"] = {};
};

/// Stores the object as the instance's handle and enters the pair in the registry. The instance takes over
/// the object's retain. Nil is stored, too, but not entered.
void AdoptHandle(REALobject instance, id __attribute__((ns_consumed)) retained);

/// The object's registered wrapper, or a new instance of the host class, registered; with one reference for
/// the caller. Null for nil and if the host lacks the class.
REALobject NewRegisteredWrapper(id object, const char *hostClassName);

/// A new instance of the host class named after the object's class or the nearest superclass that has one,
/// with one reference for the caller. Not registered. Null if no class of the chain has a host class, or if
/// the object is not an instance of `requiredClass`.
REALobject NewNSObjectQZL(id object, Class requiredClass);

/// The same for an object of any class.
REALobject NewWrapperOfAnyClass(id object);

/// Constructor hook of the classes whose instances wrap a Cocoa object.
void WrapperConstructorHook(REALobject instance);

/// Destructor hook of the same classes: removes the handle from the registry, releases it and clears it.
/// After a Cocoa exception the handle stays.
void WrapperDestructorHook(REALobject instance);

// What the members of the notification classes have in common.
#pragma once

#include <objc/objc.h>

#include "frame/class_records.h"

@class NSDictionary, NSString;

/// The property "Handle": the host reads and writes the handle in the instance data itself, without a retain.
inline constexpr REALpropertyRecord kHandleProperty = {
    .name = "Handle",
    .type = "Integer",
    .getter = {.field = kFieldAccess},
    .setter = {.field = kFieldAccess},
};

/// Whether the instance already has its handle; if so, raises the host exception.
bool ConstructorCalledTooOften(REALobject instance);

/// Whether there is no observer, or one without a handle; if so, raises the host exception.
bool ObserverIsMissing(REALobject observer);

/// The arguments that add or remove an observer, as Cocoa objects: autoreleased, or borrowed from wrappers.
/// Nil for null.
struct ObserverArguments {
    NSString *name;
    id observer;
    id object;
};

/// Converts the name, then takes the observer's handle, then converts the object. Cocoa exceptions pass.
ObserverArguments ConvertObserverArguments(REALobject observer, REALstring name, REALobject theObject);

/// The arguments that make or post a notification, as Cocoa objects: autoreleased, or borrowed from wrappers.
/// Nil for null.
struct PostArguments {
    NSString *name;
    id object;
    NSDictionary *userInfo;
};

/// Converts the name, then the object, then the user info. Cocoa exceptions pass.
PostArguments ConvertPostArguments(REALstring name, REALobject theObject, REALdictionary userInfo);

/// The same with a string for the object, as in notifications between processes.
PostArguments ConvertPostArguments(REALstring name, REALstring theObject, REALdictionary userInfo);

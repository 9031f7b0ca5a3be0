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

/// Whether the instance has its handle already; if so, the host exception is raised.
bool ConstructorCalledTooOften(REALobject instance);

/// Whether there is no observer, or one without a handle; if so, the host exception is raised.
bool ObserverIsMissing(REALobject observer);

/// What adds or removes an observer, as Cocoa takes it: autoreleased, or borrowed from the wrapper. Nil for
/// null.
struct ObserverArguments {
    NSString *name;
    id observer;
    id object;
};

/// Converts the name, then takes the observer's handle, then converts the object. Cocoa exceptions pass.
ObserverArguments ConvertObserverArguments(REALobject observer, REALstring name, REALobject theObject);

/// What makes or posts a notification, as Cocoa takes it: autoreleased. Nil for null.
struct PostArguments {
    NSString *name;
    id object;
    NSDictionary *userInfo;
};

/// Converts the name, then the object, then the user info. Cocoa exceptions pass.
PostArguments ConvertPostArguments(REALstring name, REALobject theObject, REALdictionary userInfo);

/// The same with a string for the object, as notifications between processes have it.
PostArguments ConvertPostArguments(REALstring name, REALstring theObject, REALdictionary userInfo);

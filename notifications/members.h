// What the members of the notification classes have in common.
#pragma once

#include "frame/class_records.h"

/// The property "Handle": the host reads and writes the handle in the instance data itself, without a retain.
inline constexpr REALpropertyRecord kHandleProperty = {
    .name = "Handle",
    .type = "Integer",
    .flags = kPropertyFlags,
    .getter = {.field = kFieldAccess},
    .setter = {.field = kFieldAccess},
    .parameter = 0,
};

/// Whether the instance has its handle already; if so, the host exception is raised.
bool ConstructorCalledTooOften(REALobject instance);

/// Whether there is no observer, or one without a handle; if so, the host exception is raised.
bool ObserverIsMissing(REALobject observer);

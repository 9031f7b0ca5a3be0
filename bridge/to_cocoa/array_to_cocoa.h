// Host arrays become Cocoa arrays.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// An autoreleased mutable Cocoa array of a host array whose elements are variants of the type code; empty
/// for an empty one, nil for an array that encloses itself and for elements of any other type. An element
/// that the array lost meanwhile raises the host's out-of-bounds exception and counts as 0 or nil. If a date
/// or object converts to nil, Cocoa raises its exception for adding nil. Cocoa exceptions pass.
id GetArrayAsNSObject(REALobject array, int64_t elementCode, const EnclosingContainers *enclosing);

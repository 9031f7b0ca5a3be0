// Host objects become Cocoa objects.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// The Cocoa object that stands for a host object: borrowed from a wrapper, valid while the host object
/// lives, or made anew and autoreleased; nil where there is none. The host object is borrowed. Called on the
/// thread on which the host called in. Cocoa exceptions pass.
id GetObjectAsNSObject(REALobject object, const EnclosingContainers *enclosing = nullptr);

// Host objects become Cocoa objects.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// The Cocoa object that stands for a host object: borrowed from a wrapper and valid while the host object
/// lives, or new and autoreleased; nil if there is none. The host object is borrowed. Called on the host's
/// thread. Cocoa exceptions pass.
id GetObjectAsNSObject(REALobject object, const EnclosingContainers *enclosing = nullptr);

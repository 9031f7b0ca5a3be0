// Cocoa objects become host variants.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// A host variant of a Cocoa object, with one reference for the caller; null for nil, for a container that
/// encloses itself and for an object that has no host counterpart. Called on the host's thread. Cocoa
/// exceptions pass.
REALobject NewVariantFromNSObject(id object, const EnclosingContainers *enclosing = nullptr);

// Cocoa objects become host variants.
#pragma once

#include <objc/objc.h>

#include "frame/host_types.h"

/// A host variant of a Cocoa object, with one reference for the caller; null for nil and for an object that
/// has no host counterpart. Called on the thread on which the host called in. Cocoa exceptions pass.
REALobject NewVariantFromNSObject(id object);

// Host variants become Cocoa objects.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// The Cocoa object of a host variant: autoreleased, constant, or borrowed from a wrapper; nil for nil, for a
/// container that encloses itself and for what has no Cocoa counterpart. The variant is borrowed. Called on
/// the host's thread. Cocoa exceptions pass.
id GetVariantAsNSObject(REALobject variant, const EnclosingContainers *enclosing = nullptr);

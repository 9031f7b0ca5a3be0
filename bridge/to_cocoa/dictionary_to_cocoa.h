// Host Dictionaries become Cocoa dictionaries.
#pragma once

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

@class NSDictionary;

/// An autoreleased Cocoa dictionary with every entry of the host Dictionary; nil for null and for one that
/// encloses itself, immutable if there are no entries. What has no Cocoa counterpart becomes `NSNull`. The
/// Dictionary is borrowed. Called on the host's thread, on one thread at a time. Cocoa exceptions pass.
NSDictionary *NewNSDictionary(REALdictionary dictionary, const EnclosingContainers *enclosing = nullptr);

// Cocoa numbers become host variants.
#pragma once

#include "frame/host_types.h"

@class NSNumber;

/// A host variant of the number by its `objCType`, with one reference for the caller, or null.
REALobject NewVariantFromNSNumber(NSNumber *number);

// Cocoa values that hold structures become host instances.
#pragma once

#include "frame/host_types.h"

@class NSValue;

/// A host instance for the structure that the value holds, by its `objCType`; with one reference for the
/// caller, or, for times, as the family returns it. Null for other structures.
REALobject NewInstanceFromNSValue(NSValue *value);

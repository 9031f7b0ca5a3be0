// The Cocoa classes whose objects become wrappers, in the order in which they are tried.
#pragma once

#include <objc/objc.h>

#include <optional>

#include "frame/host_types.h"

/// The wrapper that the first row makes whose class the object is of: with one reference for the caller, or
/// null. Nothing where the object is of no row. Called on the thread on which the host called in. Cocoa
/// exceptions pass.
std::optional<REALobject> ConvertByClassRow(id object);

// The Cocoa classes whose objects become wrappers, in the order in which they are tried.
#pragma once

#include <objc/objc.h>

#include <cstddef>

#include "frame/host_types.h"

inline constexpr size_t kClassRowCount = 109;

struct FoundRow {
    /// `kClassRowCount` for none.
    size_t row;
    /// Whether no row before it can come to be the first: their classes are known, or left out for good.
    bool isFinal;
};

/// The first row whose class the object is of. Any thread. Cocoa exceptions pass.
FoundRow ClassRowOf(id object);

/// The wrapper that a row makes of an object of its class: with one reference for the caller, or null. Called
/// on the thread on which the host called in. Cocoa exceptions pass.
REALobject ConvertByClassRow(id object, size_t row);

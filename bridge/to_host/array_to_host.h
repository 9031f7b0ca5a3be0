// Cocoa arrays and sets become host arrays.
#pragma once

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

@class NSArray;

/// A new host array of objects with the elements, converted, in order; with one reference for the caller.
/// `container` is what the elements are of: the array itself, or a set. Null where that encloses itself, and
/// where the host makes no array or does not let it be filled. Cocoa exceptions pass.
REALobject NewHostArray(NSArray *array, const void *container, const EnclosingContainers *enclosing);

// Cocoa arrays and sets become host arrays.
#pragma once

#include "frame/host_types.h"

@class NSArray;

/// A new host array of objects with the elements, converted, in order; with one reference for the caller.
/// Null where the host makes no array or does not let it be filled. Cocoa exceptions pass.
REALobject NewHostArray(NSArray *array);

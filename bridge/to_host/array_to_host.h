// Cocoa arrays and sets become host arrays.
#pragma once

#include "bridge/to_host/conversion_subject.h"
#include "frame/host_types.h"

/// A new host array of objects with the elements of a Cocoa array, converted, in order; with one reference
/// for the caller. Null if the Cocoa array encloses itself, and if the host makes no array or cannot fill it.
/// Cocoa exceptions pass.
REALobject NewArrayOfElements(const ConversionSubject &subject);

/// The same with the members of a set, in the set's order.
REALobject NewArrayOfMembers(const ConversionSubject &subject);

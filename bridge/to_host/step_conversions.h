// What the steps of the conversion to the host make of objects that are no containers: each a host value with
// one reference for the caller, or null. Called on the thread on which the host called in. Cocoa exceptions
// pass.
#pragma once

#include "bridge/to_host/conversion_subject.h"
#include "frame/host_types.h"

// Values

/// A folder item, or else the text of the URL.
REALobject NewURLVariant(const ConversionSubject &subject);
/// Made even where the host string is null.
REALobject NewStringVariant(const ConversionSubject &subject);
REALobject NewMemoryBlockOfData(const ConversionSubject &subject);
REALobject NewFalse(const ConversionSubject &subject);
REALobject NewTrue(const ConversionSubject &subject);
REALobject NewNumberVariant(const ConversionSubject &subject);
REALobject NewDateInstance(const ConversionSubject &subject);
/// Of a structure in an `NSValue`.
REALobject NewStructureInstance(const ConversionSubject &subject);

// Wrappers

/// The registered wrapper of the host class that is named after the step's class.
REALobject NewNamedWrapper(const ConversionSubject &subject);
/// The wrapper of the nearest class that has a host class.
REALobject NewNearestWrapper(const ConversionSubject &subject);
/// What the family makes of the view, or else the nearest wrapper.
REALobject NewViewWrapper(const ConversionSubject &subject);
/// The host object in the family's wrapper, as the family gives it.
REALobject UnwrapHostObject(const ConversionSubject &subject);

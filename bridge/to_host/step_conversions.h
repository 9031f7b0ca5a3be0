// The conversion steps for objects other than containers: each returns a host value with one reference for
// the caller, or null. Called on the host's thread. Cocoa exceptions pass.
#pragma once

#include "bridge/to_host/conversion_subject.h"
#include "frame/host_types.h"

// Values

/// A folder item, or else the text of the URL.
REALobject NewURLVariant(const ConversionSubject &subject);
/// Returns a variant even if the host string is null.
REALobject NewStringVariant(const ConversionSubject &subject);
REALobject NewMemoryBlockOfData(const ConversionSubject &subject);
REALobject NewFalse(const ConversionSubject &subject);
REALobject NewTrue(const ConversionSubject &subject);
REALobject NewNumberVariant(const ConversionSubject &subject);
REALobject NewDateInstance(const ConversionSubject &subject);
/// For a structure in an `NSValue`.
REALobject NewStructureInstance(const ConversionSubject &subject);

// Wrappers

/// The registered wrapper of the host class that is named after the step's class.
REALobject NewNamedWrapper(const ConversionSubject &subject);
/// The wrapper of the nearest class that has a host class.
REALobject NewNearestWrapper(const ConversionSubject &subject);
/// What the family makes of the view, or else the nearest wrapper.
REALobject NewViewWrapper(const ConversionSubject &subject);
/// The host object in the family's wrapper, as the family returns it.
REALobject UnwrapHostObject(const ConversionSubject &subject);

// Host Dates become Cocoa dates.
#pragma once

#include "frame/host_types.h"

@class NSCalendarDate;

/// An autoreleased Cocoa date with the host Date's fields as wall-clock time in the local time zone; nil for
/// null and if a field cannot be read. Called on the host's thread. Cocoa exceptions pass.
NSCalendarDate *NewNSDate(REALobject date);

// Cocoa dates become host Dates.
#pragma once

#include "frame/host_types.h"

@class NSDate;

/// A new host Date with the date's wall-clock fields in the default time zone, whole seconds, with one
/// reference for the caller, or null.
REALobject NewHostDate(NSDate *date);

// File URLs become host folder items.
#pragma once

#include "frame/host_types.h"

@class NSURL;

/// A new folder item for a file URL, also for an item that does not exist yet, if its folder does; with one
/// reference for the caller. Null for any other URL.
REALobject NSURLRBFile(NSURL *url);

// File URLs become host folder items.
#pragma once

#include "frame/host_types.h"

@class NSURL;

/// A new folder item for a file URL, even if the item does not exist yet, as long as its folder does; with
/// one reference for the caller. Null for any other URL.
REALobject NSURLRBFile(NSURL *url);

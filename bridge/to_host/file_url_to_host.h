// File URLs become host folder items.
#pragma once

#include "frame/host_types.h"

@class NSURL;

/// A new folder item for a file URL, also where there is no such item yet but its folder is there; with one
/// reference for the caller. Null for any other URL.
REALobject NSURLRBFile(NSURL *url);

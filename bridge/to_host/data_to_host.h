// Cocoa data becomes host memory blocks.
#pragma once

#include "frame/host_types.h"

@class NSData;

/// A new memory block that holds the data's bytes, with one reference for the caller. Null for nil and for
/// empty data; null with the host exception raised if no block can be made. Called on the host's thread.
REALmemoryBlock NSDataRB(NSData *data);

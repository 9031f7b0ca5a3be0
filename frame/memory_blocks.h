// Makes host memory blocks of bytes, and finds the bytes of host memory blocks. Called on the host's thread.
#pragma once

#include <cstdint>

#include "frame/host_types.h"

/// The argument and the result of `REALNewMemoryBlockWork`.
struct MemoryBlockRequest {
    /// In bytes.
    int64_t size;
    /// A block of at least that size with one reference for the caller, or null.
    REALmemoryBlock block;
};

/// The address of a memory block's bytes, borrowed from the block; null for null and if the host does not
/// know the address.
void *MyREALMemoryBlockGetPtr(REALmemoryBlock block);

/// The size of a memory block in bytes, as the block reports it, or else the host; 0 if neither does.
int64_t MemoryBlockSize(REALmemoryBlock block);

/// Fills a `MemoryBlockRequest` through the host's constructor, which takes sizes beyond 32 bits. Runs inside
/// the host's exception handler, which catches what the constructor raises.
void REALNewMemoryBlockWork(void *request);

/// A new memory block that holds a copy of the bytes, with one reference for the caller. Null without bytes;
/// null with the host exception raised if no block can be made.
REALmemoryBlock NewMemoryBlockOfBytes(const void *bytes, int64_t length);

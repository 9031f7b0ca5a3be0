// Heap buffers of zero bytes whose allocation may fail without an exception.
#pragma once

#include <cstdlib>
#include <memory>

struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};
using ZeroedBuffer = std::unique_ptr<char, FreeMemory>;

/// `size` zero bytes, or null when there is no memory.
inline ZeroedBuffer AllocateZeroed(size_t size)
{
    return ZeroedBuffer(static_cast<char *>(std::calloc(1, size)));
}

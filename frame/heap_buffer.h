// Heap buffers whose allocation may fail without an exception.
#pragma once

#include <cstdlib>
#include <memory>

struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};
using HeapBuffer = std::unique_ptr<char, FreeMemory>;

/// `size` bytes, or null without memory.
inline HeapBuffer AllocateBuffer(size_t size)
{
    return HeapBuffer(static_cast<char *>(std::malloc(size)));
}

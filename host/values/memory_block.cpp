// The host's MemoryBlock: bytes at a fixed address.
#include "host/values/memory_block.h"

#include <cstdlib>

#include <sys/mman.h>

namespace qzlhost {

namespace {

/// Blocks from this size on are mapped. Smaller ones lie on the heap, where sanitizers check their bounds.
constexpr int64_t kMapped = int64_t{1} << 20;

void *AllocateBytes(int64_t size)
{
    if (size < kMapped)
        return std::calloc(1, static_cast<size_t>(size));
    void *const bytes = mmap(nullptr, static_cast<size_t>(size), PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return bytes == MAP_FAILED ? nullptr : bytes;
}

} // namespace

MemoryBlock::~MemoryBlock()
{
    Free();
}

bool MemoryBlock::Allocate(int64_t size)
{
    void *const bytes = size > 0 ? AllocateBytes(size) : nullptr;
    if (size < 0 || (size > 0 && !bytes))
        return false;
    Free();
    bytes_ = bytes;
    size_ = size;
    return true;
}

void MemoryBlock::Free()
{
    if (size_ < kMapped)
        std::free(bytes_);
    else
        munmap(bytes_, static_cast<size_t>(size_));
}

} // namespace qzlhost

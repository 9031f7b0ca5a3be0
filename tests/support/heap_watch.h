// What the code that is linked into a test allocates on the heap, and allocations of its that fail.
#pragma once

#include <cstddef>

/// Follows the allocations of the thread while it lives; one at a time. Those inside shared libraries do not
/// count. A test that uses this is linked with heap_watch.cpp and the linker's --wrap for what that defines.
class HeapWatch {
public:
    HeapWatch();
    ~HeapWatch();
    HeapWatch(const HeapWatch &) = delete;
    HeapWatch &operator=(const HeapWatch &) = delete;

    /// The next allocation fails, as it does when there is no memory.
    void FailNext() { failsNext_ = true; }
    /// Whether an allocation has failed on demand.
    bool HasFailed() const { return hasFailed_; }

    /// How many allocations there were.
    int Allocations() const { return allocations_; }
    /// The bytes that the last of them was for.
    size_t LastSize() const { return lastSize_; }
    /// How many of them were not freed.
    int Unfreed() const;

    // For the functions that stand before the allocator.

    /// Whether the allocation that begins now is to fail.
    static bool Fails();
    static void *Allocated(void *block, size_t size);
    static void Freed(void *block);

private:
    static constexpr int kMostBlocks = 4096;

    bool failsNext_ = false;
    bool hasFailed_ = false;
    int allocations_ = 0;
    size_t lastSize_ = 0;
    /// Blocks that are not freed yet; null for a free place. Nothing here may allocate.
    void *blocks_[kMostBlocks] = {};
};

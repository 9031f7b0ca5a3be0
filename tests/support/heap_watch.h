// Records what the code linked into a test allocates on the heap, and can let an allocation fail.
#pragma once

#include <cstddef>

/// Follows the thread's allocations while it lives; one at a time. Those inside shared libraries do not
/// count. A test that uses it is linked with heap_watch.cpp and with --wrap for the functions defined there.
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
    /// The size of the last of them in bytes.
    size_t LastSize() const { return lastSize_; }
    /// How many of them were not freed.
    int Unfreed() const;

    // For the functions in place of the allocator's

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
    /// The blocks not freed yet; null in a free place. An array, since nothing here may allocate.
    void *blocks_[kMostBlocks] = {};
};

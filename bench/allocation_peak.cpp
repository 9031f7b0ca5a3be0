// Stands in front of the C library's allocator and counts the bytes that are allocated.
#include "bench/allocation_peak.h"

#include <errno.h>
#include <malloc.h>

#include <atomic>
#include <cstddef>

// The C library's own.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *memory, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *memory);
}

namespace {

std::atomic<int64_t> gAllocated{0};
std::atomic<int64_t> gStart{0};
std::atomic<int64_t> gPeak{0};

int64_t SizeOf(void *memory)
{
    return memory == nullptr ? 0 : static_cast<int64_t>(malloc_usable_size(memory));
}

void Add(int64_t bytes)
{
    const int64_t now = gAllocated += bytes;
    int64_t peak = gPeak;
    while (now > peak && !gPeak.compare_exchange_weak(peak, now)) {
    }
}

void *Counted(void *memory)
{
    Add(SizeOf(memory));
    return memory;
}

} // namespace

void StartCountingAllocations()
{
    gStart = gAllocated.load();
    gPeak = gAllocated.load();
}

int64_t PeakOfAllocations()
{
    return gPeak - gStart;
}

extern "C" {

void *malloc(size_t size)
{
    return Counted(__libc_malloc(size));
}

void *calloc(size_t count, size_t size)
{
    return Counted(__libc_calloc(count, size));
}

void *realloc(void *memory, size_t size)
{
    const int64_t before = SizeOf(memory);
    void *const result = __libc_realloc(memory, size);
    if (result != nullptr || size == 0)
        Add(SizeOf(result) - before);
    return result;
}

void *memalign(size_t alignment, size_t size)
{
    return Counted(__libc_memalign(alignment, size));
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return Counted(__libc_memalign(alignment, size));
}

int posix_memalign(void **out, size_t alignment, size_t size)
{
    void *const memory = memalign(alignment, size);
    if (memory == nullptr)
        return ENOMEM;
    *out = memory;
    return 0;
}

void free(void *memory)
{
    gAllocated -= SizeOf(memory);
    __libc_free(memory);
}

} // extern "C"

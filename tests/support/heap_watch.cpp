// Replaces the allocator's functions for the code linked into a test.
#include "tests/support/heap_watch.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <new>

namespace {

thread_local HeapWatch *gWatch;

} // namespace

HeapWatch::HeapWatch()
{
    gWatch = this;
}

HeapWatch::~HeapWatch()
{
    gWatch = nullptr;
}

int HeapWatch::Unfreed() const
{
    return kMostBlocks -
           static_cast<int>(std::count(std::begin(blocks_), std::end(blocks_), static_cast<void *>(nullptr)));
}

bool HeapWatch::Fails()
{
    if (gWatch == nullptr || !gWatch->failsNext_)
        return false;
    gWatch->failsNext_ = false;
    gWatch->hasFailed_ = true;
    return true;
}

void *HeapWatch::Allocated(void *block, size_t size)
{
    if (gWatch == nullptr || block == nullptr)
        return block;
    ++gWatch->allocations_;
    gWatch->lastSize_ = size;
    void **const end = std::end(gWatch->blocks_);
    void **const place = std::find(gWatch->blocks_, end, nullptr);
    if (place == end)
        std::abort();
    *place = block;
    return block;
}

void HeapWatch::Freed(void *block)
{
    if (gWatch != nullptr)
        std::replace(std::begin(gWatch->blocks_), std::end(gWatch->blocks_), block,
                     static_cast<void *>(nullptr));
}

// The linker redirects calls of a function to its __wrap_ form; __real_ is the function itself. Operators
// have their mangled names.
extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);
void __real_free(void *block);
void *__real__Znwm(size_t size);
void *__real__Znam(size_t size);
void *__real__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t &);
void *__real__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t &);
void __real__ZdlPv(void *block);
void __real__ZdaPv(void *block);

void *__wrap_malloc(size_t size)
{
    return HeapWatch::Fails() ? nullptr : HeapWatch::Allocated(__real_malloc(size), size);
}

void *__wrap_calloc(size_t count, size_t size)
{
    return HeapWatch::Fails() ? nullptr : HeapWatch::Allocated(__real_calloc(count, size), count * size);
}

void *__wrap_realloc(void *block, size_t size)
{
    if (HeapWatch::Fails())
        return nullptr;
    HeapWatch::Freed(block);
    return HeapWatch::Allocated(__real_realloc(block, size), size);
}

void __wrap_free(void *block)
{
    HeapWatch::Freed(block);
    __real_free(block);
}

void *__wrap__Znwm(size_t size)
{
    if (HeapWatch::Fails())
        throw std::bad_alloc();
    return HeapWatch::Allocated(__real__Znwm(size), size);
}

void *__wrap__Znam(size_t size)
{
    if (HeapWatch::Fails())
        throw std::bad_alloc();
    return HeapWatch::Allocated(__real__Znam(size), size);
}

void *__wrap__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t &tag)
{
    return HeapWatch::Fails() ? nullptr : HeapWatch::Allocated(__real__ZnwmRKSt9nothrow_t(size, tag), size);
}

void *__wrap__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t &tag)
{
    return HeapWatch::Fails() ? nullptr : HeapWatch::Allocated(__real__ZnamRKSt9nothrow_t(size, tag), size);
}

void __wrap__ZdlPv(void *block)
{
    HeapWatch::Freed(block);
    __real__ZdlPv(block);
}

void __wrap__ZdaPv(void *block)
{
    HeapWatch::Freed(block);
    __real__ZdaPv(block);
}
}

// Functions and data of macOS's libraries that this platform lacks.
#include "platform/macho/adapters.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <random>

void *machoGetClass(void *object)
{
    return object_getClass(static_cast<id>(object));
}

void *machoAlloc(void *type)
{
    return [static_cast<Class>(type) alloc];
}

void *machoAllocInit(void *type)
{
    return [[static_cast<Class>(type) alloc] init];
}

void *machoRetain(void *object)
{
    return [static_cast<id>(object) retain];
}

void machoRelease(void *object)
{
    [static_cast<id>(object) release];
}

void *machoAutorelease(void *object)
{
    return [static_cast<id>(object) autorelease];
}

void *machoPushPool()
{
    return [[NSAutoreleasePool alloc] init];
}

void machoPopPool(void *pool)
{
    [static_cast<id>(pool) release];
}

void machoConstructBadAlloc(void *memory)
{
    new (memory) std::bad_alloc;
}

void machoBzero(void *memory, size_t size)
{
    std::memset(memory, 0, size);
}

int machoAtExit(void (*function)())
{
    return std::atexit(function);
}

void machoMemsetPattern16(void *memory, const void *pattern, size_t size)
{
    constexpr size_t kPatternSize = 16;
    for (size_t done = 0; done < size; done += kPatternSize)
        std::memcpy(static_cast<char *>(memory) + done, pattern,
                    size - done < kPatternSize ? size - done : kPatternSize);
}

size_t machoStrlcpy(char *destination, const char *source, size_t size)
{
    const size_t length = std::strlen(source);
    if (size != 0) {
        const size_t copied = length < size ? length : size - 1;
        std::memcpy(destination, source, copied);
        destination[copied] = '\0';
    }
    return length;
}

void machoStubBinder()
{
    std::abort();
}

extern "C" {
const uintptr_t machoStackGuard =
    (uintptr_t{std::random_device()()} << 32 | std::random_device()()) & ~uintptr_t{0xFF};
const uintptr_t machoUnused[8] = {};
}

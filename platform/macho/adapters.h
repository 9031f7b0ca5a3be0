// Functions and data of macOS's libraries that this platform lacks, for the code of an image.
#pragma once

#include <cstddef>
#include <cstdint>

// Each does what the function of its name does on macOS.
extern "C" {

void *machoGetClass(void *object);
void *machoAlloc(void *type);
void *machoAllocInit(void *type);
void *machoRetain(void *object);
void machoRelease(void *object);
void *machoAutorelease(void *object);
void *machoPushPool();
void machoPopPool(void *pool);

void machoConstructBadAlloc(void *memory);

void machoBzero(void *memory, size_t size);
int machoAtExit(void (*function)());
void machoMemsetPattern16(void *memory, const void *pattern, size_t size);
size_t machoStrlcpy(char *destination, const char *source, size_t size);
/// Ends the process. No code gets here, since all binds are made on loading.
[[noreturn]] void machoStubBinder();

/// What functions guard their stack with: any value that is not easily guessed.
extern const uintptr_t machoStackGuard;
/// The target of pointers that nothing here follows.
extern const uintptr_t machoUnused[8];
}

// Functions and data of macOS's libraries that this platform has not, for code of an image.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/macho/dispatch.h"

// Each does what the function of its name does on macOS.
extern "C" {

void *machoGetClass(void *object);
void *machoAlloc(void *type);
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
/// All binds are made on loading, so that no code gets here: ends the process.
[[noreturn]] void machoStubBinder();

/// Compared by functions that guard their stack: any value that is not easily guessed.
extern const uintptr_t machoStackGuard;
/// Something to point to for what is not used here.
extern const uintptr_t machoUnused[8];
}

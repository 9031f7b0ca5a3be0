// How host code learns of errors: host exceptions, by class name. Nothing here throws.
//
// The host records a raised exception and throws it once the library's function has returned, so each of
// these returns normally and the caller ends with its empty result. Called on the thread that the host called
// in on.
#pragma once

#include <cstdint>

/// Raises an instance of the host's exception class of that name, or a "RuntimeException" where there is
/// none. `message` is ASCII; null gives the empty message. The host sees error number 0, whatever is passed.
void RaiseException(const char *className, const char *message, uint32_t errorNumber = 0, int64_t extra = 0);

/// Raises "OutOfBoundsException" for an index outside 0 to `count` - 1.
void RaiseOutOfBoundsException(int64_t value, int64_t count);

/// Raises the host exception that stands for the C++ exception being handled. Called in a `catch (...)`
/// handler.
void RaiseCurrentStandardException();

/// Nothing: the getter behind the declaration that makes the exception class known to the host as a type.
struct REALobjectStruct *DummyException(struct REALobjectStruct *instance);

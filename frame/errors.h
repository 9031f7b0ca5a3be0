// How host code learns of errors: host exceptions, by class name.
//
// The host records a raised exception and throws it once the library's function has returned, so each of
// these returns normally and the caller ends with its empty result. Exceptions that the host's functions
// throw meanwhile pass. Called on the thread that the host called in on.
#pragma once

#include <cstdint>

/// Raises an instance of the host's exception class of that name, or a "RuntimeException" where there is
/// none. `message` is ASCII; null gives the empty message. The host sees error number 0, whatever is passed.
void RaiseException(const char *className, const char *message, uint32_t errorNumber = 0, int64_t extra = 0);

/// Raises "OutOfBoundsException" for an index outside 0 to `count` - 1.
void RaiseOutOfBoundsException(int64_t value, int64_t count);

/// The host exception that stands for a C++ exception.
struct StandardFailure {
    const char *className;
    /// Null for none.
    const char *message;
    /// What `message` lies in unless it is a constant; `RaiseStandardFailure` frees it.
    char *copy;
};

/// What stands for the C++ exception that is being handled. Called in a `catch (...)` handler.
StandardFailure CurrentStandardFailure();

/// Raises it, once. Not called in a handler: what the host throws meanwhile may be of another language, and
/// such exceptions cannot be caught while one is being handled.
void RaiseStandardFailure(const StandardFailure &failure);

/// Runs a body that may throw C++ exceptions, in a `.cpp` source, and returns its result; after an exception
/// the host exception is raised and the result is empty.
template <typename Body>
auto GuardStandardExceptions(Body body) -> decltype(body())
{
    StandardFailure failure;
    try {
        return body();
    } catch (...) {
        failure = CurrentStandardFailure();
    }
    RaiseStandardFailure(failure);
    return {};
}

/// Returns null. Its declaration makes the exception class known to the host as a type.
struct REALobjectStruct *DummyException(struct REALobjectStruct *instance);

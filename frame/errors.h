// Reports errors to the host: raises host exceptions by class name.
//
// The host records a raised exception and throws it once the library's function has returned. So each of
// these functions returns normally, and its caller then returns an empty result. Exceptions that the host's
// functions throw meanwhile pass. Called on the host's thread.
#pragma once

#include <cstdint>

/// Raises an instance of the host's exception class of that name, or of "RuntimeException" if the host lacks
/// it. `message` is ASCII; null stands for the empty message. The host sees error number 0, whatever is
/// passed.
void RaiseException(const char *className, const char *message, uint32_t errorNumber = 0, int64_t extra = 0);

/// Raises "OutOfBoundsException" for an index outside 0 to `count` - 1.
void RaiseOutOfBoundsException(int64_t value, int64_t count);

/// The host exception that stands for a C++ exception.
struct StandardFailure {
    const char *className;
    /// Null for none.
    const char *message;
    /// The memory of `message`, which `RaiseStandardFailure` frees; null if the message is a constant.
    char *copy;
};

/// The host exception for the C++ exception that is being handled. Called inside a `catch (...)` handler.
StandardFailure CurrentStandardFailure();

/// Raises the host exception; called once for each failure. Not called inside a handler: the host may throw
/// exceptions of another language, which cannot be caught there.
void RaiseStandardFailure(const StandardFailure &failure);

/// Runs a body and returns its result. After a C++ exception, raises the host exception and returns an empty
/// result. For `.cpp` sources only.
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

/// Returns null. The declaration of this member makes the exception class known to the host as a type.
struct REALobjectStruct *DummyException(struct REALobjectStruct *instance);

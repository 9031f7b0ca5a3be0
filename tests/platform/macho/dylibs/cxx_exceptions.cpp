// Throws, catches and lets through C++ exceptions.
#include <new>

#include "tests/platform/macho/dylibs/exceptions.h"

namespace {

/// Uses many registers and a frame of this size, so that each kind of unwind rule applies.
template <int Size>
__attribute__((noinline)) long UseStack(const Callback &callback, int *living, long a, long b, long c, long d)
{
    volatile char room[Size];
    room[0] = static_cast<char>(a);
    room[Size - 1] = static_cast<char>(b);
    const Counted counted(living);
    callback();
    return a * b + c * d + room[0] + room[Size - 1];
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

void throwValue(int value)
{
    throw Thrown{value};
}
void throwBadAlloc()
{
    throw std::bad_alloc();
}

Outcome catchByType(const Callback &callback, int *value)
{
    try {
        callback();
    } catch (const Thrown &thrown) {
        *value = thrown.value;
        return Outcome::OwnType;
    } catch (const std::exception &) {
        return Outcome::StandardException;
    } catch (...) {
        return Outcome::Anything;
    }
    return Outcome::Nothing;
}

Outcome catchOwnType(const Callback &callback, int *value)
{
    try {
        callback();
    } catch (const Thrown &thrown) {
        *value = thrown.value;
        return Outcome::OwnType;
    }
    return Outcome::Nothing;
}

void rethrowAnything(const Callback &callback, int *count)
{
    try {
        callback();
    } catch (...) {
        ++*count;
        throw;
    }
}

/// Lets it through a frame of each size; the sum keeps the registers in use.
long letThroughFrames(const Callback &callback, int *living, long a, long b, long c, long d)
{
    const auto inner = [](void *context) {
        const auto &arguments = *static_cast<const Callback *>(context);
        arguments();
    };
    Callback wrapped = callback;
    const Callback small = {inner, &wrapped};
    return UseStack<16>(small, living, a, b, c, d) + UseStack<4096>(small, living, b, c, d, a);
}
long letThroughLargeFrame(const Callback &callback, int *living, long a, long b, long c, long d)
{
    return UseStack<500000>(callback, living, a, b, c, d) * a +
           UseStack<40>(callback, living, c, d, a, b) * b;
}

long throwAndCatch(long times)
{
    long sum = 0;
    for (long i = 0; i < times; ++i) {
        try {
            throwValue(static_cast<int>(i));
        } catch (const Thrown &thrown) {
            sum += thrown.value;
        }
    }
    return sum;
}
}
#pragma GCC visibility pop

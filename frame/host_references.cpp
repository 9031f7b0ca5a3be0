// Gives references back where nothing may be thrown.
#include "frame/host_references.h"

namespace {

/// The host may throw exceptions of any kind, Cocoa's included.
template <typename Handle>
void UnlockQuietly(Handle handle) noexcept
{
    try {
        UnlockHostValue(handle);
    } catch (...) {
    }
}

} // namespace

void UnlockHostValueQuietly(REALobject object) noexcept
{
    UnlockQuietly(object);
}

void UnlockHostValueQuietly(REALstring string) noexcept
{
    UnlockQuietly(string);
}

void UnlockHostValueQuietly(REALtext text) noexcept
{
    UnlockQuietly(text);
}

// Gives references back where nothing may be thrown.
#include "frame/host_references.h"

namespace {

/// The host's exceptions are of any kind, Cocoa's among them.
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

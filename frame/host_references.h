// Owning types for references and locks of host values.
#pragma once

#include <utility>

#include "frame/host_entry_points.h"

inline bool LockHostValue(REALobject object)
{
    return REALLockObject(object);
}
inline bool LockHostValue(REALstring string)
{
    return REALLockString(string);
}
inline void UnlockHostValue(REALobject object)
{
    REALUnlockObject(object);
}
inline void UnlockHostValue(REALstring string)
{
    REALUnlockString(string);
}
inline void UnlockHostValue(REALtext text)
{
    REALUnlockText(text);
}

/// Gives one reference back while another exception unwinds, and drops what the host throws.
void UnlockHostValueQuietly(REALobject object) noexcept;
void UnlockHostValueQuietly(REALstring string) noexcept;
void UnlockHostValueQuietly(REALtext text) noexcept;

/// Owns one reference of an instance, string or text. May hold null.
///
/// Giving a reference back runs the host's code, which may throw. A function that ends normally calls
/// `GiveBack`, which lets the host's exceptions pass. The destructor serves the unwinding of another
/// exception: it gives back what is still held and drops what the host throws.
template <typename Handle>
class HostRef {
public:
    /// Takes over a reference that the caller owns.
    explicit HostRef(Handle owned) : handle_(owned) {}

    ~HostRef()
    {
        if (handle_ != nullptr)
            UnlockHostValueQuietly(handle_);
    }

    HostRef(const HostRef &) = delete;
    HostRef &operator=(const HostRef &) = delete;

    explicit operator bool() const { return handle_ != nullptr; }

    /// Borrowed.
    Handle Get() const { return handle_; }

    /// Transfers the reference to the caller.
    Handle Release() { return std::exchange(handle_, nullptr); }

    /// Gives the reference back, if there is one. The host's exceptions pass; even then the reference counts
    /// as given back.
    void GiveBack()
    {
        if (const Handle handle = Release())
            UnlockHostValue(handle);
    }

private:
    Handle handle_;
};

/// Keeps a borrowed instance or string locked. If the host cannot lock, nothing is unlocked either. Ends as a
/// `HostRef` does.
template <typename Handle>
class HostLock {
public:
    explicit HostLock(Handle borrowed)
        : reference_(borrowed != nullptr && LockHostValue(borrowed) ? borrowed : nullptr)
    {
    }

    void GiveBack() { reference_.GiveBack(); }

private:
    HostRef<Handle> reference_;
};

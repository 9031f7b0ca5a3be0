// Owning types for references: of host values and of Core Foundation objects.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

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
inline bool LockHostValue(REALtext text)
{
    return REALLockText(text);
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

/// Holds one reference of an instance, string or text and gives it back at its end. May hold null.
template <typename Handle>
class HostRef {
public:
    /// Takes over a reference that the caller owns.
    explicit HostRef(Handle owned) : handle_(owned) {}

    /// Takes a reference of its own; where the host cannot lock, there is none to give back either.
    static HostRef Locked(Handle borrowed)
    {
        const bool locked = borrowed != nullptr && LockHostValue(borrowed);
        return HostRef(locked ? borrowed : nullptr);
    }

    ~HostRef()
    {
        if (handle_ != nullptr)
            UnlockHostValue(handle_);
    }

    HostRef(const HostRef &) = delete;
    HostRef &operator=(const HostRef &) = delete;

    explicit operator bool() const { return handle_ != nullptr; }

    /// Borrowed.
    Handle Get() const { return handle_; }

    /// Hands the reference to the caller.
    Handle Release() { return std::exchange(handle_, nullptr); }

private:
    Handle handle_;
};

/// Holds one retain of a Core Foundation object and gives it back at its end. May hold null.
template <typename Reference>
class CFRef {
public:
    /// Takes over a retain that the caller owns.
    explicit CFRef(Reference owned) : reference_(owned) {}

    ~CFRef()
    {
        if (reference_ != nullptr)
            CFRelease(reference_);
    }

    CFRef(const CFRef &) = delete;
    CFRef &operator=(const CFRef &) = delete;

    explicit operator bool() const { return reference_ != nullptr; }

    /// Borrowed.
    Reference Get() const { return reference_; }

private:
    Reference reference_;
};

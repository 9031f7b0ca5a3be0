// The owning type for references of Core Foundation objects.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

/// Owns one retain of a Core Foundation object. May hold null.
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

    /// Transfers the retain to the caller.
    Reference Release() { return std::exchange(reference_, nullptr); }

private:
    Reference reference_;
};

// Replaces the runtime's look-ups of classes by name: counts them and can hide a class.
#pragma once

#include <atomic>

/// Code compiled for Linux looks a class up whenever it uses it, the loader of dylibs when it binds a weak
/// import.
struct ClassLookUps {
    /// The class that no look-up finds for now; null for none.
    static inline const char *hidden = nullptr;
    /// The calls of objc_getClass from the executable's own code, where the linker redirects them to
    /// __wrap_objc_getClass.
    static inline std::atomic<int> count{0};
};

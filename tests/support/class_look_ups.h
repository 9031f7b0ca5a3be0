// Stands in the place of the runtime's look-ups of classes by name: counts them, and hides a class.
#pragma once

#include <atomic>

/// One for all look-ups of the process. Code for Linux asks whenever it uses a class, and the loader of
/// dylibs when it binds a weak import.
struct ClassLookUps {
    /// The class that is not found by its name, for now; null for none.
    static inline const char *hidden = nullptr;
    /// How often the executable's own code called objc_getClass, where the linker leads such calls to
    /// __wrap_objc_getClass.
    static inline std::atomic<int> count{0};
};

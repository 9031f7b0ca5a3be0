// The table of a function's handlers (its language-specific data), as compilers of every platform write it.
#pragma once

#include <cstdint>
#include <functional>

namespace macho {

struct Handler {
    /// 0 where the function does nothing about an exception from there.
    uintptr_t landingPad = 0;
    /// Which handler it is; 0 for clean-up alone.
    int64_t selector = 0;
};

/// What a function does about an exception out of the instruction at `place`. `catches` is asked for the
/// handlers' types, in their order; null stands for everything.
Handler FindHandler(const uint8_t *table, uintptr_t functionStart, uintptr_t place,
                    const std::function<bool(const void *type)> &catches);

} // namespace macho

// The table of a function's handlers (its language-specific data), as compilers of every platform write it.
#pragma once

#include <cstdint>
#include <functional>

namespace macho {

struct Handler {
    /// 0 if the function does nothing about the exception.
    uintptr_t landingPad = 0;
    /// Which handler it is; 0 for clean-up alone.
    int64_t selector = 0;
};

/// What a function does about an exception from the instruction at `place`. `catches` is called with the
/// types of the handlers, in their order; null stands for every type.
Handler FindHandler(const uint8_t *table, uintptr_t functionStart, uintptr_t place,
                    const std::function<bool(const void *type)> &catches);

} // namespace macho

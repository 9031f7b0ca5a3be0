// Functions that are looked up until they are found, and kept from then on.
#pragma once

/// The function that `slot` keeps, or else what `find` answers, kept unless it is null. `slot` is a variable
/// with static storage; threads that race store the same pointer.
template <typename Function, typename Find>
Function *KeepFound(Function *&slot, Find find)
{
    Function *function = __atomic_load_n(&slot, __ATOMIC_RELAXED);
    if (function == nullptr) {
        function = reinterpret_cast<Function *>(find());
        __atomic_store_n(&slot, function, __ATOMIC_RELAXED);
    }
    return function;
}

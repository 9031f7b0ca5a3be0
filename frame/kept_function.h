// What is looked up by name and kept, in variables with static storage. Any thread, without a lock: threads
// that race repeat the look-up and store the same.
#pragma once

#include <atomic>

/// The function that `slot` keeps, or null.
template <typename Function>
Function *Kept(Function *const &slot)
{
    return __atomic_load_n(&slot, __ATOMIC_RELAXED);
}

template <typename Function, typename Find>
__attribute__((noinline)) Function *FindAndKeep(Function *&slot, Find find)
{
    const auto function = reinterpret_cast<Function *>(find());
    __atomic_store_n(&slot, function, __ATOMIC_RELAXED);
    return function;
}

/// The function that `slot` keeps, or else what `find` answers, kept unless it is null.
template <typename Function, typename Find>
Function *KeepFound(Function *&slot, Find find)
{
    Function *const function = Kept(slot);
    return function != nullptr ? function : FindAndKeep(slot, find);
}

/// What the first look-up gave, null included.
template <typename Pointer>
class FirstFound {
public:
    template <typename Find>
    Pointer Get(Find find)
    {
        if (!done_) {
            pointer_ = reinterpret_cast<void *>(find());
            done_ = true;
        }
        return reinterpret_cast<Pointer>(pointer_.load());
    }

private:
    std::atomic<void *> pointer_{nullptr};
    std::atomic<bool> done_{false};
};

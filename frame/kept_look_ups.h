// Pointers that are looked up by name and kept in slots with static storage. Any thread, without a lock:
// threads that race repeat the look-up and store the same. A thread that finds a pointer kept also finds what
// the look-up made ready behind it.
#pragma once

#include <atomic>

/// The pointer in `slot`, or null before one was found.
template <typename Pointed>
Pointed *Kept(Pointed *const &slot)
{
    return __atomic_load_n(&slot, __ATOMIC_ACQUIRE);
}

template <typename Pointed, typename Find>
__attribute__((noinline)) Pointed *FindAndKeep(Pointed *&slot, Find find)
{
    const auto found = reinterpret_cast<Pointed *>(find());
    __atomic_store_n(&slot, found, __ATOMIC_RELEASE);
    return found;
}

/// Looks up until something is found. Returns the pointer in `slot`, or else what `find` returns, which is
/// kept unless it is null.
template <typename Pointed, typename Find>
Pointed *KeepFound(Pointed *&slot, Find find)
{
    Pointed *const found = Kept(slot);
    return found != nullptr ? found : FindAndKeep(slot, find);
}

/// Where `KeepFirst` keeps its pointer.
template <typename Pointer>
struct FirstSlot {
    std::atomic<void *> pointer{nullptr};
    std::atomic<bool> isFilled{false};
};

/// Looks up once. Returns what the first `find` returned, null included.
template <typename Pointer, typename Find>
Pointer KeepFirst(FirstSlot<Pointer> &slot, Find find)
{
    if (!slot.isFilled) {
        slot.pointer = reinterpret_cast<void *>(find());
        slot.isFilled = true;
    }
    return reinterpret_cast<Pointer>(slot.pointer.load());
}

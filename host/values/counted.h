// References to the host's instances, strings and texts, and who holds them.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

namespace qzlhost {

enum class Kind : uint8_t { Instance, String, Text };

/// The references to a thing and, among them, those that the program's values and the host's own
/// containers hold. The rest are the library's. A new thing has one reference that nobody holds. Any thread.
class Counts {
public:
    int64_t References() const { return static_cast<int64_t>(word_.load() >> 32); }
    int64_t Holders() const { return static_cast<int64_t>(word_.load() & kHolders); }

    void AddReference() { word_ += kReference; }
    void AddHolder() { word_ += kReference + 1; }
    /// Gives a reference a holder; false if every reference has one.
    bool Adopt();
    /// Gives up the holder but keeps the reference, which becomes the library's.
    void Disown() { word_ -= 1; }

    enum class Outcome { Alive, Last, NotHeld };
    /// Drops a reference without a holder. Returns NotHeld, and does nothing, if there is none.
    Outcome DropReference();
    /// Drops a holder and its reference; true if that was the last reference.
    bool DropHolder() { return (word_.fetch_sub(kReference + 1) >> 32) == 1; }

private:
    static constexpr uint64_t kReference = uint64_t{1} << 32;
    static constexpr uint64_t kHolders = kReference - 1;

    std::atomic<uint64_t> word_{kReference};
};

/// The common beginning of instances, strings and texts.
struct Counted {
    Counts counts;
    uint64_t serial = 0;
    /// The number of the host that made it.
    uint32_t host = 0;
    std::atomic<bool> dying{false};
};

struct Instance;
struct String;
struct Text;

/// Frees a thing without references. The destructors of an instance's classes run before.
void Destroy(Instance *thing);
void Destroy(String *thing);
void Destroy(Text *thing);

/// Adds a reference for the library and returns `thing`; null is ignored.
template <typename T>
T *Lock(T *thing)
{
    if (thing)
        thing->counts.AddReference();
    return thing;
}

/// Drops one of the library's references. If it has none, records a mistake and does nothing. Null is
/// ignored.
template <typename T>
void Unlock(T *thing);

/// Takes over the reference that came with `thing`. If there is none, records a mistake and adds one.
template <typename T>
void AdoptReference(T *thing);

/// A reference that the program or the host holds.
template <typename T>
class Held {
public:
    Held() = default;
    Held(const Held &other) : thing_(other.thing_)
    {
        if (thing_)
            thing_->counts.AddHolder();
    }
    Held(Held &&other) noexcept : thing_(std::exchange(other.thing_, nullptr)) {}
    Held &operator=(Held other) noexcept
    {
        std::swap(thing_, other.thing_);
        return *this;
    }
    ~Held()
    {
        if (thing_ && thing_->counts.DropHolder())
            Destroy(thing_);
    }

    /// Takes over the reference that came with `thing`.
    static Held Adopt(T *thing)
    {
        if (thing)
            AdoptReference(thing);
        return Held(thing);
    }
    /// Takes a reference of its own.
    static Held Share(T *thing)
    {
        if (thing)
            thing->counts.AddHolder();
        return Held(thing);
    }

    T *Get() const { return thing_; }
    T *operator->() const { return thing_; }
    explicit operator bool() const { return thing_ != nullptr; }
    /// Passes the reference to the library, and returns the thing.
    T *HandOver() &&
    {
        if (thing_)
            thing_->counts.Disown();
        return std::exchange(thing_, nullptr);
    }

private:
    explicit Held(T *thing) : thing_(thing) {}

    T *thing_ = nullptr;
};

} // namespace qzlhost

// The books of a host: what is alive, who made it, and what went wrong.
#pragma once

#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/values/counted.h"

namespace qzlhost {

/// Everything alive that the host has handed out. Any thread.
class Accounts {
public:
    /// Closed books take no entries and answer that everything is alive.
    explicit Accounts(bool open) : open_(open) {}

    /// Numbers a new thing.
    void Enter(Kind kind, Counted *thing);
    /// A thing is about to be freed; `description` names it from now on.
    void Remove(const Counted *thing, std::string description);

    enum class Standing { Alive, Dead, Foreign, OtherKind };
    Standing Find(Kind kind, const void *pointer) const;
    /// How a pointer that is not alive is called: the dead thing's description, or its address.
    std::string NameOf(const void *pointer) const;

    /// Things with more references than holders, one line each.
    std::vector<std::string> Leaks() const;
    /// All things that are alive, with their kind.
    std::vector<std::pair<Kind, Counted *>> Alive() const;

    bool Open() const { return open_; }

private:
    struct Entry {
        Kind kind;
        Counted *thing;
        const char *maker;
    };

    const bool open_;
    mutable std::mutex mutex_;
    uint64_t lastSerial_ = 0;
    std::unordered_map<const void *, Entry> alive_;
    std::unordered_map<const void *, std::string> dead_;
};

class Mistakes {
public:
    void Record(std::string text);
    std::vector<std::string> All() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::string> all_;
};

/// What runs while no host function does.
inline constexpr char kProgram[] = "the program";

/// The name of the host function that runs on this thread; `kProgram` outside of all.
const char *CurrentFunction();
/// Whether a host function runs on this thread.
bool InsideFunction();

/// Names the host function that runs while this lives.
class FunctionScope {
public:
    explicit FunctionScope(const char *name);
    ~FunctionScope();
    FunctionScope(const FunctionScope &) = delete;
    FunctionScope &operator=(const FunctionScope &) = delete;

private:
    const char *outer_;
};

} // namespace qzlhost

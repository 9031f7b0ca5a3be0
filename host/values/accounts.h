// The accounts of a host: what is alive, who made it, and what went wrong.
#pragma once

#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/values/counted.h"
#include "host/values/current.h"

namespace qzlhost {

/// Everything alive that the host has handed out, and the library's mistakes. Any thread.
class Accounts {
public:
    /// Closed accounts take no entries and say of everything that it is alive.
    explicit Accounts(bool open);

    /// The accounts of the host that made the thing; null if that host is gone.
    static Accounts *Of(const Counted *thing);

    /// Notes a new thing as this host's, and numbers it.
    void Enter(Kind kind, Counted *thing);
    /// A thing is about to be freed; its description names it from now on.
    template <class T>
    void Remove(const T *thing)
    {
        if (open_)
            Remove(thing, Describe(thing));
    }

    enum class Standing { Alive, Dead, Foreign, OtherKind };
    Standing Find(Kind kind, const void *pointer) const;
    /// How a pointer that is not alive is called: the dead thing's description, or its address.
    std::string NameOf(const void *pointer) const;

    /// Things with more references than holders, one line each.
    std::vector<std::string> Leaks() const;

    void RecordMistake(std::string text);
    std::vector<std::string> Mistakes() const;

    /// Frees what the library has left over. What values still hold is theirs to free.
    void FreeRemains();

private:
    struct Entry {
        Kind kind;
        Counted *thing;
        const char *maker;
    };

    void Remove(const Counted *thing, std::string description);
    std::vector<Entry> Alive() const;

    const bool open_;
    /// Counts the hosts of the process, from 1.
    const uint32_t host_;
    mutable std::mutex mutex_;
    uint64_t lastSerial_ = 0;
    std::unordered_map<const void *, Entry> alive_;
    std::unordered_map<const void *, std::string> dead_;
    std::vector<std::string> mistakes_;
};

/// Records a mistake of the library's with the host that lives now, and the host function that noticed it.
void RecordMistake(const std::string &text);

/// What runs while no host function does.
inline constexpr char kProgram[] = "the program";

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

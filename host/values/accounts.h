// The accounts of a host: what is alive, who made it, and what went wrong.
#pragma once

#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/values/counted.h"
#include "host/values/current.h"

namespace qzlhost {

/// Everything alive that the host has made, and the library's mistakes. Any thread.
class Accounts {
public:
    /// Closed accounts record nothing and report everything as alive.
    explicit Accounts(bool open);

    /// The accounts of the host that made the thing; null if that host is gone.
    static Accounts *Of(const Counted *thing);

    /// Enters a new thing as this host's, and numbers it.
    void Enter(Kind kind, Counted *thing);
    /// Removes a thing that is about to be freed, and keeps its description.
    template <typename T>
    void Remove(const T *thing)
    {
        if (open_)
            Remove(thing, Describe(thing));
    }

    enum class Standing { Alive, Dead, Foreign, OtherKind };
    Standing Find(Kind kind, const void *pointer) const;
    /// Names a pointer that is not alive: the dead thing's description, or the address.
    std::string NameOf(const void *pointer) const;

    /// Things with more references than holders, one line each.
    std::vector<std::string> Leaks() const;

    void RecordMistake(std::string text);
    std::vector<std::string> Mistakes() const;

    /// Frees what the library has leaked. Values free what they still hold.
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

/// The address in hexadecimal digits.
std::string AddressText(const void *pointer);

/// Records a mistake of the library with the current host, after the name of the host function that noticed
/// it. Does nothing between hosts.
void RecordMistake(const std::string &text);

/// Stands for the running host function while none runs.
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

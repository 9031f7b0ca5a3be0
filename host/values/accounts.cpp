// The books of a host: what is alive, who made it, and what went wrong.
#include "host/values/accounts.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

/// How many of the dead are remembered by name.
constexpr size_t kRememberedDead = 100000;

thread_local const char *currentFunction = kProgram;

std::string DescribeThing(Kind kind, const Counted *thing)
{
    switch (kind) {
    case Kind::Instance:
        return Describe(static_cast<const Instance *>(thing));
    case Kind::String:
        return Describe(static_cast<const String *>(thing));
    case Kind::Text:
        return Describe(static_cast<const Text *>(thing));
    }
    return {};
}

} // namespace

void Accounts::Enter(Kind kind, Counted *thing)
{
    if (!open_)
        return;
    std::lock_guard lock(mutex_);
    thing->serial = ++lastSerial_;
    alive_[thing] = {kind, thing, currentFunction};
    dead_.erase(thing);
}

void Accounts::Remove(const Counted *thing, std::string description)
{
    if (!open_)
        return;
    std::lock_guard lock(mutex_);
    alive_.erase(thing);
    if (dead_.size() >= kRememberedDead)
        dead_.clear();
    dead_[thing] = std::move(description);
}

Accounts::Standing Accounts::Find(Kind kind, const void *pointer) const
{
    if (!open_)
        return Standing::Alive;
    std::lock_guard lock(mutex_);
    const auto found = alive_.find(pointer);
    if (found != alive_.end())
        return found->second.kind == kind ? Standing::Alive : Standing::OtherKind;
    return dead_.count(pointer) != 0 ? Standing::Dead : Standing::Foreign;
}

std::string Accounts::NameOf(const void *pointer) const
{
    std::lock_guard lock(mutex_);
    const auto found = dead_.find(pointer);
    if (found != dead_.end())
        return found->second;
    char address[32];
    std::snprintf(address, sizeof address, "0x%" PRIxPTR, reinterpret_cast<uintptr_t>(pointer));
    return address;
}

std::vector<std::string> Accounts::Leaks() const
{
    std::vector<std::pair<uint64_t, std::string>> leaks;
    std::lock_guard lock(mutex_);
    for (const auto &each : alive_) {
        const Entry &entry = each.second;
        const int64_t references = entry.thing->counts.References();
        const int64_t holders = entry.thing->counts.Holders();
        if (references > holders) {
            leaks.emplace_back(entry.thing->serial, DescribeThing(entry.kind, entry.thing) + ": " +
                                                        std::to_string(references) + " references, " +
                                                        std::to_string(holders) + " held, made by " +
                                                        entry.maker);
        }
    }
    std::sort(leaks.begin(), leaks.end());
    std::vector<std::string> lines;
    lines.reserve(leaks.size());
    for (auto &leak : leaks)
        lines.push_back(std::move(leak.second));
    return lines;
}

std::vector<std::pair<Kind, Counted *>> Accounts::Alive() const
{
    std::vector<std::pair<Kind, Counted *>> things;
    std::lock_guard lock(mutex_);
    for (const auto &each : alive_)
        things.emplace_back(each.second.kind, each.second.thing);
    return things;
}

void Mistakes::Record(std::string text)
{
    std::lock_guard lock(mutex_);
    all_.push_back(std::move(text));
}

std::vector<std::string> Mistakes::All() const
{
    std::lock_guard lock(mutex_);
    return all_;
}

const char *CurrentFunction()
{
    return currentFunction;
}

bool InsideFunction()
{
    return currentFunction != kProgram;
}

FunctionScope::FunctionScope(const char *name) : outer_(currentFunction)
{
    currentFunction = name;
}

FunctionScope::~FunctionScope()
{
    currentFunction = outer_;
}

} // namespace qzlhost

// The accounts of a host: what is alive, who made it, and what went wrong.
#include "host/values/accounts.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <memory>

#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

/// How many descriptions of dead things are kept.
constexpr size_t kRememberedDead = 100000;

std::atomic<uint32_t> gLastHost{0};

thread_local const char *gCurrentFunction = kProgram;

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

void Free(Kind kind, Counted *thing)
{
    switch (kind) {
    case Kind::Instance:
        FreeInstance(static_cast<Instance *>(thing));
        break;
    case Kind::String:
        Destroy(static_cast<String *>(thing));
        break;
    case Kind::Text:
        Destroy(static_cast<Text *>(thing));
        break;
    }
}

} // namespace

Accounts::Accounts(bool open) : open_(open), host_(++gLastHost) {}

Accounts *Accounts::Of(const Counted *thing)
{
    Accounts *const accounts = Current<Accounts>();
    return accounts && accounts->host_ == thing->host ? accounts : nullptr;
}

void Accounts::Enter(Kind kind, Counted *thing)
{
    thing->host = host_;
    if (!open_)
        return;
    std::lock_guard lock(mutex_);
    thing->serial = ++lastSerial_;
    alive_[thing] = {kind, thing, gCurrentFunction};
    dead_.erase(thing);
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
    return found != dead_.end() ? found->second : AddressText(pointer);
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

void Accounts::RecordMistake(std::string text)
{
    std::lock_guard lock(mutex_);
    mistakes_.push_back(std::move(text));
}

std::vector<std::string> Accounts::Mistakes() const
{
    std::lock_guard lock(mutex_);
    return mistakes_;
}

void Accounts::FreeRemains()
{
    std::vector<std::unique_ptr<Payload>> payloads;
    for (const Entry &entry : Alive()) {
        if (entry.kind == Kind::Instance) {
            auto *const instance = static_cast<Instance *>(entry.thing);
            // No destructor of its classes may run any more.
            instance->dying = true;
            payloads.emplace_back(std::exchange(instance->payload, nullptr));
        }
    }
    payloads.clear();
    for (const Entry &entry : Alive()) {
        if (entry.kind == Kind::Instance)
            entry.thing->dying = false;
        if (entry.thing->counts.Holders() == 0)
            Free(entry.kind, entry.thing);
    }
}

void Accounts::Remove(const Counted *thing, std::string description)
{
    std::lock_guard lock(mutex_);
    alive_.erase(thing);
    if (dead_.size() >= kRememberedDead)
        dead_.clear();
    dead_[thing] = std::move(description);
}

std::vector<Accounts::Entry> Accounts::Alive() const
{
    std::vector<Entry> entries;
    std::lock_guard lock(mutex_);
    for (const auto &each : alive_)
        entries.push_back(each.second);
    return entries;
}

std::string AddressText(const void *pointer)
{
    char address[32];
    std::snprintf(address, sizeof address, "0x%" PRIxPTR, reinterpret_cast<uintptr_t>(pointer));
    return address;
}

void RecordMistake(const std::string &text)
{
    if (Accounts *const accounts = Current<Accounts>())
        accounts->RecordMistake(std::string(gCurrentFunction) + ": " + text);
}

bool InsideFunction()
{
    return gCurrentFunction != kProgram;
}

FunctionScope::FunctionScope(const char *name) : outer_(gCurrentFunction)
{
    gCurrentFunction = name;
}

FunctionScope::~FunctionScope()
{
    gCurrentFunction = outer_;
}

} // namespace qzlhost

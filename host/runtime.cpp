// What one host consists of.
#include "host/runtime.h"

#include "host/calls/class_sources.h"
#include "host/calls/cocoa.h"
#include "host/calls/exceptions.h"
#include "host/interface/entry_points.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

std::atomic<Runtime *> current{nullptr};
std::atomic<uint32_t> lastNumber{0};

/// Frees what the library has left over. What values hold still is theirs to free.
void FreeRemains(Accounts &accounts)
{
    std::vector<std::unique_ptr<Payload>> payloads;
    for (const auto &[kind, thing] : accounts.Alive()) {
        if (kind == Kind::Instance) {
            auto *const instance = static_cast<Instance *>(thing);
            // Without the classes nothing may run at its end.
            instance->dying = true;
            payloads.emplace_back(std::exchange(instance->payload, nullptr));
        }
    }
    payloads.clear();
    for (const auto &[kind, thing] : accounts.Alive()) {
        if (kind == Kind::Instance)
            static_cast<Instance *>(thing)->dying = false;
        if (thing->counts.Holders() != 0)
            continue;
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
}

} // namespace

Runtime::Runtime(HostOptions hostOptions)
    : options(hostOptions), number(++lastNumber), accounts(options.accounts)
{
    Runtime *expected = nullptr;
    if (!current.compare_exchange_strong(expected, this))
        throw UsageError("there is a host already in this process");
    WarmUpCocoa();
    for (const EntryPoint &entry : EntryPoints())
        entry.description->fails = false;
    if (!options.version)
        faults.Lack("REALGetRBVersion");
    for (const BuiltInClass &table : BuiltInClasses())
        classes.Add(MakeBuiltInClass(table));
}

Runtime::~Runtime()
{
    TakeException();
    FreeRemains(accounts);
    current = nullptr;
}

Runtime *Runtime::Current()
{
    return current;
}

void RecordMistake(const std::string &text)
{
    if (Runtime *const runtime = Runtime::Current())
        runtime->mistakes.Record(std::string(CurrentFunction()) + ": " + text);
}

} // namespace qzlhost

// The keys by which a library asks for its events, and where they are written.
#include "host/calls/event_keys.h"

namespace qzlhost {

namespace {

/// The last record version whose events have their keys in a record of the host's.
constexpr uint32_t kIndirectVersion = 9;

} // namespace

EventKeys::~EventKeys()
{
    for (uint64_t *slot : slots_)
        *slot = 0;
}

uint64_t EventKeys::Assign(uint64_t *slot, uint32_t recordVersion)
{
    const uint64_t key = ++last_;
    if (recordVersion == kIndirectVersion) {
        records_.push_back({0, key});
        *slot = reinterpret_cast<uint64_t>(&records_.back());
    } else {
        *slot = key;
    }
    slots_.push_back(slot);
    return key;
}

} // namespace qzlhost

// The record of calls of host functions.
#include "host/interface/trace.h"

#include <algorithm>

namespace qzlhost {

void Trace::Add(const char *function, std::string arguments)
{
    std::lock_guard lock(mutex_);
    all_.push_back({function, std::move(arguments)});
}

std::vector<TraceEntry> Trace::All() const
{
    std::lock_guard lock(mutex_);
    return all_;
}

void Trace::Clear()
{
    std::lock_guard lock(mutex_);
    all_.clear();
}

int Trace::CallsOf(std::string_view function) const
{
    std::lock_guard lock(mutex_);
    return static_cast<int>(std::count_if(
        all_.begin(), all_.end(), [&](const TraceEntry &entry) { return entry.function == function; }));
}

} // namespace qzlhost

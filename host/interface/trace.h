// The record of calls of host functions.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "host/host.h"

namespace qzlhost {

/// Any thread.
class Trace {
public:
    void Add(const char *function, std::string arguments);
    std::vector<TraceEntry> All() const;
    void Clear();
    int CallsOf(std::string_view function) const;

private:
    mutable std::mutex mutex_;
    std::vector<TraceEntry> all_;
};

} // namespace qzlhost

// What one host consists of, for the files that implement it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/calls/class_registry.h"
#include "host/calls/event_keys.h"
#include "host/host.h"
#include "host/interface/faults.h"
#include "host/interface/trace.h"
#include "host/values/accounts.h"

namespace qzlhost {

struct Runtime {
    explicit Runtime(HostOptions hostOptions);
    ~Runtime();
    Runtime(const Runtime &) = delete;
    Runtime &operator=(const Runtime &) = delete;

    const HostOptions options;
    /// Counts the hosts of the process, from 1.
    const uint32_t number;
    Accounts accounts;
    Mistakes mistakes;
    Trace trace;
    Faults faults;
    Interceptor interceptor;
    ClassRegistry classes;
    EventKeys eventKeys;
    std::vector<ClassRecord> records;
    std::optional<int32_t> declaredVersion;

    /// The runtime of the host that lives now; null between hosts. Any thread.
    static Runtime *Current();
};

/// Records a mistake of the library's with the current host, and the host function that noticed it.
void RecordMistake(const std::string &text);

} // namespace qzlhost

// What a host keeps on its side of the interface.
#pragma once

#include <cstdint>
#include <optional>

#include "host/interface/faults.h"
#include "host/interface/trace.h"
#include "host/values/current.h"

namespace qzlhost {

struct Session {
    /// What REALGetRBVersion returns; without a value the host lacks that function.
    std::optional<double> version;
    /// What RegisterPluginVersion was called with, if it was.
    std::optional<int32_t> declaredVersion;
    /// Whether calls are recorded in the trace.
    bool traces = true;
    Trace trace;
    Faults faults;
    Interceptor interceptor;
};

} // namespace qzlhost

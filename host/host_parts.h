// What the files that implement the class Host share.
#pragma once

#include "host/host.h"
#include "host/runtime.h"
#include "host/values/object.h"

namespace qzlhost {

struct Host::Implementation : Runtime {
    using Runtime::Runtime;

    Host *host = nullptr;
};

/// Throws UsageError for what is no object.
Instance &InstanceOf(const Value &value);

} // namespace qzlhost

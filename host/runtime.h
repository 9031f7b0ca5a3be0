// The parts of a host, for the files that implement the class Host.
#pragma once

#include <optional>

#include "host/calls/class_registry.h"
#include "host/interface/session.h"
#include "host/values/accounts.h"

namespace qzlhost {

class Host;

/// Its parts are the current ones while it lives.
struct Runtime {
    /// Throws UsageError while there is another one. Without `keepsAccounts` neither references nor calls are
    /// recorded.
    Runtime(Host &host, std::optional<double> version, bool keepsAccounts);
    ~Runtime();
    Runtime(const Runtime &) = delete;
    Runtime &operator=(const Runtime &) = delete;

    Accounts accounts;
    ClassRegistry classes;
    Session session;
};

} // namespace qzlhost

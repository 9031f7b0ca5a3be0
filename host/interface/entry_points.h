// The functions that a library finds by name through the resolver.
#pragma once

#include <string_view>
#include <vector>

#include "host/interface/thunk.h"

namespace qzlhost {

struct EntryPoint {
    const char *name;
    void *function;
    NativeFunction *description;
};

/// One row for each host function.
const std::vector<EntryPoint> &EntryPoints();

/// Null for an unknown name.
const EntryPoint *FindEntryPoint(std::string_view name);

/// The resolver that a library is given.
void *ResolveEntryPoint(const char *name);

} // namespace qzlhost

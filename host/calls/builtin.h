// Tables of members that describe the host's own classes and global methods.
#pragma once

#include <memory>
#include <vector>

#include "host/values/object.h"

namespace qzlhost {

/// Called as `R (self, int64_t parameter)` and `void (self, int64_t parameter, value)`.
struct BuiltInProperty {
    const char *name;
    const char *type;
    void *getter;
    /// Null if the property is read-only.
    void *setter = nullptr;
    int64_t parameter = 0;
};

/// Called as `R (self, arguments...)`; a global method without the instance.
struct BuiltInMethod {
    const char *declaration;
    void *function;
};

struct BuiltInClass {
    const char *name;
    /// Null where there is none.
    const char *super = nullptr;
    std::unique_ptr<Payload> (*makePayload)() = nullptr;
    std::vector<BuiltInProperty> properties = {};
    std::vector<BuiltInMethod> methods = {};
};

template <typename P>
std::unique_ptr<Payload> MakePayloadOf()
{
    return std::make_unique<P>();
}

} // namespace qzlhost

// What the family's plugins ask the host for, through the interface.
#pragma once

#include "host/host.h"

namespace family {

/// The host's function of this name.
template <typename Function>
Function *HostFunction(const char *name)
{
    return reinterpret_cast<Function *>(qzlhost::Host::Current().Resolver()(name));
}

/// With one reference for the caller; null where the host has no such class.
inline qzlhost::Instance *NewInstance(const char *className)
{
    return HostFunction<qzlhost::Instance *(const char *)>("PluginNewInstance")(className);
}

inline void Lock(qzlhost::Instance *instance)
{
    HostFunction<void(qzlhost::Instance *)>("REALLockObject")(instance);
}

inline void Unlock(qzlhost::Instance *instance)
{
    HostFunction<void(qzlhost::Instance *)>("REALUnlockObject")(instance);
}

inline void *InstanceData(qzlhost::Instance *instance)
{
    constexpr size_t kHeader = 48;
    return reinterpret_cast<char *>(instance) + kHeader;
}

} // namespace family

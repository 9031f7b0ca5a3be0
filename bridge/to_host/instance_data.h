// Where a host instance keeps the data of its plugin class.
#pragma once

#include <cstddef>

#include "frame/host_types.h"

/// Bytes of the host's own in each instance, before the instance data.
inline constexpr size_t kInstanceHeaderSize = 48;

/// The instance data of an instance, which must not be null.
template <typename Data>
Data *InstanceData(REALobject instance)
{
    return reinterpret_cast<Data *>(reinterpret_cast<char *>(instance) + kInstanceHeaderSize);
}

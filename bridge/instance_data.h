// Where a host instance keeps the data of its plugin class, and what a wrapper keeps there.
#pragma once

#include <objc/objc.h>

#include <cstddef>

#include "frame/host_types.h"

/// The bytes that the host itself uses in each instance, before the instance data.
inline constexpr size_t kInstanceHeaderSize = 48;

/// The instance data of an instance, which must not be null.
template <typename Data>
Data *InstanceData(REALobject instance)
{
    return reinterpret_cast<Data *>(reinterpret_cast<char *>(instance) + kInstanceHeaderSize);
}

/// Instance data of a wrapper of a Cocoa object, in this library's classes and in the family's.
struct WrapperData {
    /// The wrapped object with one retain that belongs to the instance, or nil.
    id handle;
};
static_assert(sizeof(WrapperData) == 8);

/// The object that an instance wraps, borrowed; nil for a null instance and for one without a handle.
inline id WrapperHandle(REALobject instance)
{
    return instance == nullptr ? nil : InstanceData<WrapperData>(instance)->handle;
}

/// The same, typed: the wrapper's class determines the object's.
template <typename Object>
Object *WrapperHandle(REALobject instance)
{
    return WrapperHandle(instance);
}

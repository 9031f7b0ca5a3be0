// Host classes that hold a Cocoa object, as other libraries of the family bring them, for works that need
// them.
#pragma once

#include <objc/objc.h>

#include <cstddef>
#include <string>

#include "frame/host_types.h"

/// Defines the class unless the host has it. Its instances have room for `dataSize` bytes of the class's own.
void DefineWrapperClass(const std::string &name, size_t dataSize = 16);

/// Where an instance keeps its Cocoa object.
inline id &FloorHandle(REALobject instance)
{
    constexpr size_t kHeaderSize = 48;
    return *reinterpret_cast<id *>(reinterpret_cast<char *>(instance) + kHeaderSize);
}

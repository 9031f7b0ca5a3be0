// The family's registry of wrappers: which host instance stands for a Cocoa object. It is keyed by identity
// and holds no references. The family makes it; without the family nothing is found and nothing is entered.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>

#include "frame/host_types.h"

/// The registry; null until the family provides it. Set once.
extern std::atomic<CFMutableDictionaryRef> instances;

/// The host instance that wraps the object, borrowed; null if there is none.
inline REALobject FindInstance(const void *object)
{
    const CFMutableDictionaryRef registry = instances;
    if (registry == nullptr)
        return nullptr;
    return static_cast<REALobject>(const_cast<void *>(CFDictionaryGetValue(registry, object)));
}

/// Enters the instance as the wrapper of the object, in place of any other.
void RegisterInstance(const void *object, REALobject instance);

/// Removes the object's entry, whichever instance it names.
void UnregisterInstance(const void *object);

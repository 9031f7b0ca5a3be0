// The family's registry of wrappers: which host instance stands for a Cocoa object. Keyed by identity; it
// holds no references. The family makes it; without the family nothing is found and nothing is entered.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>

#include "frame/host_types.h"

/// The registry, or null while the family has not given it. Set once.
extern std::atomic<CFMutableDictionaryRef> instances;

/// The host instance that wraps the object, borrowed; null where there is none.
inline REALobject FindInstance(const void *object)
{
    const CFMutableDictionaryRef registry = instances;
    if (registry == nullptr)
        return nullptr;
    return static_cast<REALobject>(const_cast<void *>(CFDictionaryGetValue(registry, object)));
}

void RegisterInstance(const void *object, REALobject instance);

/// Removes the object's entry, whichever instance it names.
void UnregisterInstance(const void *object);

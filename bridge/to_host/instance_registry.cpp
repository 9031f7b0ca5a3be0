// Keeps track of the wrappers of Cocoa objects in the family's registry.
#include "bridge/to_host/instance_registry.h"

std::atomic<CFMutableDictionaryRef> instances{nullptr};

REALobject FindInstance(const void *object)
{
    const CFMutableDictionaryRef registry = instances;
    if (registry == nullptr)
        return nullptr;
    return static_cast<REALobject>(const_cast<void *>(CFDictionaryGetValue(registry, object)));
}

void RegisterInstance(const void *object, REALobject instance)
{
    if (const CFMutableDictionaryRef registry = instances)
        CFDictionarySetValue(registry, object, instance);
}

void UnregisterInstance(const void *object)
{
    if (const CFMutableDictionaryRef registry = instances)
        CFDictionaryRemoveValue(registry, object);
}

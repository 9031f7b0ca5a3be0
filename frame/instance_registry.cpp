// Enters wrappers of Cocoa objects in the family's registry and removes them.
#include "frame/instance_registry.h"

std::atomic<CFMutableDictionaryRef> instances{nullptr};

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

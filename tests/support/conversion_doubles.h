// Doubles for tests that turn Cocoa objects into host values: host classes and the registry.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

#include "bridge/instance_data.h"
#include "bridge/to_host/core_foundation_wrappers.h"
#include "bridge/to_host/object_to_variant.h"
#include "bridge/to_host/wrappers.h"
#include "family/wrapper_classes.h"
#include "frame/instance_registry.h"
#include "tests/support/linked_test.h"
#include "tests/support/runtime_classes.h"

/// Defines a host class of wrappers of Core Foundation objects, whose constructor writes this signature.
inline void DefineCFWrapperClass(qzlhost::Host &host, const std::string &name,
                                 int64_t signature = kCFWrapperSignature)
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.dataSize = sizeof(CFWrapperData);
    definition.constructor = [signature](qzlhost::Instance *instance) {
        auto *const data = InstanceData<CFWrapperData>(reinterpret_cast<REALobject>(instance));
        data->signature = signature;
        data->unused = data;
    };
    definition.destructor = [](qzlhost::Instance *instance) {
        auto *const data = InstanceData<CFWrapperData>(reinterpret_cast<REALobject>(instance));
        if (data->handle != nullptr)
            CFRelease(data->handle);
    };
    host.DefineClass(std::move(definition));
}

/// Replaces the registry of wrappers while it lives.
struct Registry {
    Registry() : before(family::gRegistry)
    {
        instances = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
        family::gRegistry = instances;
    }
    ~Registry()
    {
        CFRelease(instances);
        instances = nullptr;
        family::gRegistry = before;
    }
    Registry(const Registry &) = delete;
    Registry &operator=(const Registry &) = delete;

    /// The host instance registered for the object, borrowed; null for none.
    REALobject At(id object) const
    {
        return static_cast<REALobject>(const_cast<void *>(CFDictionaryGetValue(instances, object)));
    }
    void Enter(id object, const qzlhost::Value &instance)
    {
        CFDictionarySetValue(instances, object, instance.ObjectPointer());
    }

    /// The family's own registry.
    const CFMutableDictionaryRef before;
};

/// The host value that the library makes of the object, with the reference that comes with it.
inline qzlhost::Value Convert(id object)
{
    return Owned(NewVariantFromNSObject(object));
}

/// Expects that each conversion of the object makes a new wrapper of the host class, which is not registered.
inline void ExpectNewWrapperEachTime(qzlhost::Host &host, id object, const std::string &hostClass)
{
    const Registry registry;
    const NSUInteger retains = [object retainCount];
    {
        const qzlhost::Value first = Convert(object);
        const qzlhost::Value second = Convert(object);
        EXPECT_EQ(host.ClassOf(first), hostClass);
        EXPECT_EQ(HandleOf<id>(host, first), object);
        EXPECT_EQ(host.References(first), 1);
        EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
        EXPECT_EQ([object retainCount], retains + 2);
        EXPECT_EQ(registry.At(object), nullptr);
    }
    EXPECT_EQ([object retainCount], retains);
}

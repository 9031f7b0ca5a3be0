// Host classes whose instances hold a Cocoa object, as the family's plugins define them.
#include "family/wrapper_classes.h"

#import <Foundation/Foundation.h>

#include "family/instances.h"

void DefineWrapperClass(qzlhost::Host &host, const std::string &name, uint64_t dataSize,
                        const std::string &super)
{
    if (host.HasClass(name))
        return;
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.super = super;
    definition.dataSize = dataSize;
    definition.destructor = [](qzlhost::Instance *instance) {
        id &handle = *static_cast<id *>(family::InstanceData(instance));
        if (handle != nil && family::gRegistry != nullptr)
            CFDictionaryRemoveValue(family::gRegistry, handle);
        [handle release];
        handle = nil;
    };
    host.DefineClass(std::move(definition));
}

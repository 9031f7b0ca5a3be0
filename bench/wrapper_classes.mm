// Defines host classes that hold a Cocoa object.
#include "bench/wrapper_classes.h"

#import <Foundation/Foundation.h>

#include "host/host.h"

void DefineWrapperClass(const std::string &name, size_t dataSize)
{
    qzlhost::Host &host = qzlhost::Host::Current();
    if (host.HasClass(name))
        return;
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.dataSize = dataSize;
    definition.destructor = [](qzlhost::Instance *instance) {
        [FloorHandle(reinterpret_cast<REALobject>(instance)) release];
    };
    host.DefineClass(std::move(definition));
}

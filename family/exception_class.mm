// The class of the plugin family for Cocoa exceptions, which the command brings itself.
#include "family/exception_class.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "host/values/object.h"

namespace qzlhost {

namespace {

constexpr char kClassName[] = "NSExceptionQZL";

NSException *&Handle(Instance *instance)
{
    return *static_cast<NSException **>(DataOf(instance));
}

void ReleaseHandle(Instance *instance)
{
    [Handle(instance) release];
    Handle(instance) = nil;
}

/// With one reference for the caller.
Instance *NewException(id, SEL, NSException *exception)
{
    Host &host = Host::Current();
    const Value wrapper = host.NewWithoutConstructor(kClassName);
    Instance *const instance = wrapper.ObjectPointer();
    Handle(instance) = [exception retain];
    if ([exception reason] != nil)
        host.Set(wrapper, "Message", Value([[exception reason] UTF8String]));
    Lock(instance);
    return instance;
}

} // namespace

void OfferExceptionClass(Host &host)
{
    ClassDefinition definition;
    definition.name = kClassName;
    definition.super = "RuntimeException";
    definition.dataSize = 2 * sizeof(void *);
    definition.destructor = ReleaseHandle;
    host.DefineClass(std::move(definition));
    class_addMethod(object_getClass([NSException class]), sel_registerName("NewNSExceptionQZL:"),
                    reinterpret_cast<IMP>(NewException), "^v24@0:8@16");
}

} // namespace qzlhost

// Stands in for the family's other libraries: the registry, the exception class, the preparation.
#include "tests/support/family.h"

#include <CoreFoundation/CoreFoundation.h>
#include <objc/runtime.h>

namespace {

/// What the class methods work on; they have no other way to it.
struct State {
    qzlhost::Host *host = nullptr;
    CFMutableDictionaryRef registry = nullptr;
    int registryAsks = 0;
    int exceptionsWrapped = 0;
    bool refusesToWrap = false;
    int preparations = 0;
} gState;

CFMutableDictionaryRef GetInstancesDictionary(id, SEL)
{
    ++gState.registryAsks;
    return gState.registry;
}

/// A host instance whose data hold the exception, retained.
qzlhost::Instance *NewException(id, SEL, NSException *exception)
{
    ++gState.exceptionsWrapped;
    if (gState.refusesToWrap)
        return nullptr;
    using NewInstance = qzlhost::Instance *(*)(const char *);
    const auto newInstance = reinterpret_cast<NewInstance>(gState.host->Resolver()("PluginNewInstance"));
    qzlhost::Instance *const instance = newInstance("NSExceptionQZL");
    const qzlhost::Value shared = qzlhost::Value::Share(instance);
    *static_cast<id *>(gState.host->InstanceData(shared)) = [exception retain];
    gState.host->Set(shared, "Message", qzlhost::Value([[exception reason] UTF8String]));
    return instance;
}

void PrepareException(id, SEL)
{
    ++gState.preparations;
}

void AddClassMethod(const char *selector, IMP implementation, const char *types)
{
    class_addMethod(object_getClass([NSException class]), sel_registerName(selector), implementation, types);
}

} // namespace

Family::Family(qzlhost::Host &host)
{
    gState.host = &host;
    gState.registry = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
}

Family::~Family()
{
    gState.host = nullptr;
}

void Family::OfferRegistry()
{
    AddClassMethod("GetInstancesDictionaryQZL", reinterpret_cast<IMP>(GetInstancesDictionary), "^v16@0:8");
}

void Family::OfferExceptions()
{
    qzlhost::ClassDefinition definition;
    definition.name = "NSExceptionQZL";
    definition.super = "RuntimeException";
    definition.dataSize = 16;
    definition.destructor = [](qzlhost::Instance *instance) {
        id &handle = *reinterpret_cast<id *>(reinterpret_cast<char *>(instance) + 48);
        [handle release];
        handle = nil;
    };
    gState.host->DefineClass(std::move(definition));
    AddClassMethod("NewNSExceptionQZL:", reinterpret_cast<IMP>(NewException), "^v24@0:8@16");
}

void Family::OfferPreparation()
{
    AddClassMethod("PrepareNSExceptionQZL", reinterpret_cast<IMP>(PrepareException), "v16@0:8");
}

int Family::RegistryAsks() const
{
    return gState.registryAsks;
}

int Family::RegistryCount() const
{
    return static_cast<int>(CFDictionaryGetCount(gState.registry));
}

qzlhost::Instance *Family::Registered(id object) const
{
    return static_cast<qzlhost::Instance *>(
        const_cast<void *>(CFDictionaryGetValue(gState.registry, object)));
}

int Family::ExceptionsWrapped() const
{
    return gState.exceptionsWrapped;
}

void Family::RefuseToWrap()
{
    gState.refusesToWrap = true;
}

int Family::Preparations() const
{
    return gState.preparations;
}

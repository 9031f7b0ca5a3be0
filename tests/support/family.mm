// Stands in for the family's other libraries: the registry, the exception class, the preparation, wrappers.
#include "tests/support/family.h"

#include <CoreFoundation/CoreFoundation.h>
#include <objc/runtime.h>

#include "tests/support/family_instances.h"

using namespace family;

namespace {

/// What the class methods work on; they have no other way to it.
struct State {
    CFMutableDictionaryRef registry = nullptr;
    bool withholdsRegistry = false;
    int registryAsks = 0;
    int exceptionsWrapped = 0;
    bool refusesToWrap = false;
    int preparations = 0;
    bool raises[3] = {};
} gState;

void RaiseIfAsked(FamilyMethod method)
{
    if (gState.raises[static_cast<size_t>(method)])
        [NSException raise:@"FamilyFailed" format:@"on purpose"];
}

CFMutableDictionaryRef GetInstancesDictionary(id, SEL)
{
    ++gState.registryAsks;
    RaiseIfAsked(FamilyMethod::Registry);
    return gState.withholdsRegistry ? nullptr : gState.registry;
}

void PrepareException(id, SEL)
{
    ++gState.preparations;
    RaiseIfAsked(FamilyMethod::Preparation);
}

/// A host instance whose data hold the exception, retained.
qzlhost::Instance *NewException(id, SEL, NSException *exception)
{
    ++gState.exceptionsWrapped;
    RaiseIfAsked(FamilyMethod::Wrapping);
    qzlhost::Instance *const instance = gState.refusesToWrap ? nullptr : NewInstance("NSExceptionQZL");
    if (instance == nullptr)
        return nullptr;
    *static_cast<id *>(InstanceData(instance)) = [exception retain];
    qzlhost::Host::Current().Set(qzlhost::Value::Share(instance), "Message",
                                 qzlhost::Value([[exception reason] UTF8String]));
    return instance;
}

/// In the order of FamilyMethod.
const struct {
    const char *selector;
    IMP implementation;
    const char *types;
} kMethods[] = {
    {"GetInstancesDictionaryQZL", reinterpret_cast<IMP>(GetInstancesDictionary), "^v16@0:8"},
    {"PrepareNSExceptionQZL", reinterpret_cast<IMP>(PrepareException), "v16@0:8"},
    {"NewNSExceptionQZL:", reinterpret_cast<IMP>(NewException), "^v24@0:8@16"},
};

/// Host classes whose data begin with a retained Cocoa object; they leave the registry as they end.
void DefineHolder(qzlhost::Host &host, const std::string &name, const std::string &super)
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.super = super;
    definition.dataSize = 16;
    definition.destructor = [](qzlhost::Instance *instance) {
        id &handle = *static_cast<id *>(InstanceData(instance));
        if (handle != nil)
            CFDictionaryRemoveValue(gState.registry, handle);
        [handle release];
        handle = nil;
    };
    host.DefineClass(std::move(definition));
}

} // namespace

Family::Family(qzlhost::Host &host) : host_(host)
{
    gState.registry = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
}

void Family::Offer(FamilyMethod method)
{
    const auto &row = kMethods[static_cast<size_t>(method)];
    class_addMethod(object_getClass([NSException class]), sel_registerName(row.selector), row.implementation,
                    row.types);
}

void Family::OfferExceptions()
{
    OfferExceptionClass();
    Offer(FamilyMethod::Wrapping);
}

void Family::OfferExceptionClass()
{
    DefineHolder(host_, "NSExceptionQZL", "RuntimeException");
}

void Family::Raise(FamilyMethod method, bool raises)
{
    gState.raises[static_cast<size_t>(method)] = raises;
}

void Family::WithholdRegistry(bool withholds)
{
    gState.withholdsRegistry = withholds;
}

void Family::RefuseToWrap()
{
    gState.refusesToWrap = true;
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

int Family::Preparations() const
{
    return gState.preparations;
}

void Family::OfferWrapperClass(const std::string &name)
{
    DefineHolder(host_, name, "");
}

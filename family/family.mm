// Stands in for the family's other plugins: the registry, the exception class, the preparation.
#include "family/family.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <atomic>

#include "family/instances.h"
#include "family/wrapper_classes.h"

using namespace family;

namespace {

/// What the class methods work on, which have no instance of Family. They count on any thread.
struct State {
    bool withholdsRegistry = false;
    std::atomic<int> registryAsks{0};
    int exceptionsWrapped = 0;
    bool refusesToWrap = false;
    std::atomic<int> preparations{0};
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
    return gState.withholdsRegistry ? nullptr : gRegistry;
}

void PrepareException(id, SEL)
{
    ++gState.preparations;
    RaiseIfAsked(FamilyMethod::Preparation);
}

/// A host instance whose data holds the exception, retained.
qzlhost::Instance *NewException(id, SEL, NSException *exception)
{
    ++gState.exceptionsWrapped;
    RaiseIfAsked(FamilyMethod::Wrapping);
    qzlhost::Instance *const instance = gState.refusesToWrap ? nullptr : NewInstance("NSExceptionQZL");
    if (instance == nullptr)
        return nullptr;
    *static_cast<id *>(InstanceData(instance)) = [exception retain];
    if ([exception reason] != nil)
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

} // namespace

Family::Family(qzlhost::Host &host) : host_(host)
{
    gRegistry = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
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
    DefineWrapperClass(host_, "NSExceptionQZL", 16, "RuntimeException");
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
    return static_cast<int>(CFDictionaryGetCount(gRegistry));
}

qzlhost::Instance *Family::Registered(id object) const
{
    return static_cast<qzlhost::Instance *>(const_cast<void *>(CFDictionaryGetValue(gRegistry, object)));
}

int Family::ExceptionsWrapped() const
{
    return gState.exceptionsWrapped;
}

int Family::Preparations() const
{
    return gState.preparations;
}

// Makes host instances that wrap Cocoa objects, and ends them.
#include "bridge/to_host/wrappers.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstring>

#include "bridge/instance_data.h"
#include "frame/cocoa_exceptions.h"
#include "frame/host_references.h"
#include "frame/instance_registry.h"

namespace {

/// A new instance for the first class in the object's chain that has a host class, with the object, retained,
/// as its handle. Null if there is no such class, or if `accepts` returns false.
template <typename Accepts>
REALobject NewWrapperAlongClassChain(id object, Accepts accepts)
{
    for (Class reached = [object class]; reached != Nil; reached = class_getSuperclass(reached)) {
        const HostClassName hostClass(reached);
        HostRef<REALobject> instance(hostClass.Get() == nullptr ? nullptr : REALnewInstance(hostClass.Get()));
        if (!instance)
            continue;
        if (accepts()) {
            InstanceData<WrapperData>(instance.Get())->handle = [object retain];
            return instance.Release();
        }
        instance.Release(); // left to the host
    }
    return nullptr;
}

} // namespace

HostClassName::HostClassName(Class cocoaClass)
    : HostClassName(object_getClassName(reinterpret_cast<id>(cocoaClass)))
{
}

HostClassName::HostClassName(const char *name)
{
    constexpr char kSuffix[] = "QZL";
    const size_t length = name == nullptr ? 0 : std::strlen(name);
    if (length == 0 || length > kLongestClassName)
        return;
    std::memcpy(text_, name, length);
    std::memcpy(text_ + length, kSuffix, sizeof kSuffix);
}

void AdoptHandle(REALobject instance, id __attribute__((ns_consumed)) retained)
{
    InstanceData<WrapperData>(instance)->handle = retained;
    if (retained != nil)
        RegisterInstance(retained, instance);
}

REALobject NewRegisteredWrapper(id object, const char *hostClassName)
{
    if (object == nil)
        return nullptr;
    if (const REALobject known = FindInstance(object)) {
        REALLockObject(known);
        return known;
    }
    HostRef<REALobject> instance(REALnewInstance(hostClassName));
    if (!instance)
        return nullptr;
    InstanceData<WrapperData>(instance.Get())->handle = [object retain];
    RegisterInstance(object, instance.Get());
    return instance.Release();
}

REALobject NewNSObjectQZL(id object, Class requiredClass)
{
    if (object == nil || requiredClass == Nil)
        return nullptr;
    // Checked only once an instance exists: an instance for an object of another class is left to the host.
    return NewWrapperAlongClassChain(object, [&] { return [object isKindOfClass:requiredClass]; });
}

REALobject NewWrapperOfAnyClass(id object)
{
    return NewWrapperAlongClassChain(object, [] { return true; });
}

void WrapperConstructorHook(REALobject)
{
    PrepareCocoaExceptionBridge();
}

void WrapperDestructorHook(REALobject instance)
{
    PrepareCocoaExceptionBridge();
    WrapperData *const data = InstanceData<WrapperData>(instance);
    if (data->handle == nil)
        return;
    GuardCocoaCalls([&] {
        UnregisterInstance(data->handle);
        [data->handle release];
        data->handle = nil;
    });
}

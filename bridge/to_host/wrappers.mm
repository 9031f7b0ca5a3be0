// Makes host instances that wrap Cocoa objects, and ends them.
#include "bridge/to_host/wrappers.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstring>

#include "bridge/to_host/instance_registry.h"
#include "frame/cocoa_exceptions.h"
#include "frame/host_entry_points.h"

namespace {

constexpr char kSuffix[] = "QZL";
constexpr size_t kLongestClassName = 199;

/// A Cocoa class's host class name.
class HostClassName {
public:
    explicit HostClassName(Class cocoaClass)
    {
        const char *const name = object_getClassName(reinterpret_cast<id>(cocoaClass));
        const size_t length = name == nullptr ? 0 : std::strlen(name);
        if (length == 0 || length > kLongestClassName)
            return;
        std::memcpy(text_, name, length);
        std::memcpy(text_ + length, kSuffix, sizeof kSuffix);
    }

    /// Null for a class without a name or with one that is too long.
    const char *Get() const { return text_[0] == '\0' ? nullptr : text_; }

private:
    char text_[kLongestClassName + sizeof kSuffix] = {};
};

} // namespace

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
    const REALobject instance = REALnewInstance(hostClassName);
    if (instance != nullptr)
        AdoptHandle(instance, [object retain]);
    return instance;
}

REALobject NewNSObjectQZL(id object, Class requiredClass)
{
    if (object == nil || requiredClass == Nil)
        return nullptr;
    for (Class reached = [object class]; reached != Nil; reached = class_getSuperclass(reached)) {
        const HostClassName hostClass(reached);
        const REALobject instance = hostClass.Get() == nullptr ? nullptr : REALnewInstance(hostClass.Get());
        if (instance == nullptr)
            continue;
        // Asked once an instance exists; where the answer is no, that instance is left to the host.
        if ([object isKindOfClass:requiredClass]) {
            InstanceData<WrapperData>(instance)->handle = [object retain];
            return instance;
        }
    }
    return nullptr;
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

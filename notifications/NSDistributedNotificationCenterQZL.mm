// The host class NSDistributedNotificationCenterQZL: observes and posts between processes.
#include "notifications/NSDistributedNotificationCenterQZL.h"

#import <Foundation/Foundation.h>

#include "bridge/instance_data.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "frame/host_strings.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

void postNotificationName4(REALobject self, REALstring name, REALstring theObject, REALdictionary userInfo,
                           uint32_t options)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, userInfo);
        [WrapperHandle<NSDistributedNotificationCenter>(self) postNotificationName:arguments.name
                                                                            object:arguments.object
                                                                          userInfo:arguments.userInfo
                                                                           options:options];
    });
}

void postNotificationName5(REALobject self, REALstring name, REALstring theObject, REALdictionary userInfo,
                           bool deliverImmediately)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, userInfo);
        [WrapperHandle<NSDistributedNotificationCenter>(self) postNotificationName:arguments.name
                                                                            object:arguments.object
                                                                          userInfo:arguments.userInfo
                                                                deliverImmediately:deliverImmediately];
    });
}

/// Unlike all other constructors, overwrites an existing handle and registers nothing.
void Constructor(REALobject self)
{
    PrepareCocoaExceptionBridge();
    GuardCocoaCalls([&] {
        InstanceData<WrapperData>(self)->handle = [[NSDistributedNotificationCenter defaultCenter] retain];
    });
}

bool suspended(REALobject self)
{
    return GuardCocoaCalls(
        [&]() -> bool { return [WrapperHandle<NSDistributedNotificationCenter>(self) suspended]; });
}

void setSuspended(REALobject self, bool value)
{
    GuardCocoaCalls([&] { [WrapperHandle<NSDistributedNotificationCenter>(self) setSuspended:value]; });
}

void addObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject,
                 int64_t suspensionBehavior)
{
    GuardCocoaCalls([&] {
        if (ObserverIsMissing(observer))
            return;
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [WrapperHandle<NSDistributedNotificationCenter>(self)
                   addObserver:arguments.observer
                      selector:@selector(GotNotification:)
                          name:arguments.name
                        object:arguments.object
            suspensionBehavior:static_cast<NSNotificationSuspensionBehavior>(suspensionBehavior)];
    });
}

REALstring NSLocalNotificationCenterTypeName()
{
    PrepareCocoaExceptionBridge();
    return GuardCocoaCalls([] { return CFString2RBString((CFStringRef)NSLocalNotificationCenterType); });
}

REALobject defaultCenter()
{
    PrepareCocoaExceptionBridge();
    return GuardCocoaCalls([] {
        return NewNSDistributedNotificationCenterQZL([NSDistributedNotificationCenter defaultCenter]);
    });
}

REALobject notificationCenterForType(REALstring name)
{
    PrepareCocoaExceptionBridge();
    return GuardCocoaCalls([&] {
        return NewNSDistributedNotificationCenterQZL(
            [NSDistributedNotificationCenter notificationCenterForType:NewNSString(name)]);
    });
}

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    MethodRecord("postNotificationName(name as string, theObject as string, userInfo as dictionary, "
                 "options as UInt32)",
                 postNotificationName4),
    MethodRecord("postNotificationName(name as string, theObject as string, userInfo as dictionary, "
                 "deliverImmediately as boolean)",
                 postNotificationName5),
    MethodRecord("Constructor", Constructor),
    ComputedPropertyRecord("suspended as boolean", suspended, setSuspended),
    MethodRecord("addObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant, "
                 "suspensionBehavior as integer)",
                 addObserver),
};

alignas(kRecordAlignment) REALconstantRecord gConstants[] = {
    {.declaration = "NSNotificationSuspensionBehaviorDrop = 1"},
    {.declaration = "NSNotificationSuspensionBehaviorCoalesce = 2"},
    {.declaration = "NSNotificationSuspensionBehaviorHold = 3"},
    {.declaration = "NSNotificationSuspensionBehaviorDeliverImmediately = 4"},
    {.declaration = "NSNotificationDeliverImmediately = 1"},
    {.declaration = "NSNotificationPostToAllSessions = 2"},
};

alignas(kRecordAlignment) REALmethodRecord gSharedMethods[] = {
    MethodRecord("NSLocalNotificationCenterType as string", NSLocalNotificationCenterTypeName),
    MethodRecord("defaultCenter as NSDistributedNotificationCenterQZL", defaultCenter),
    MethodRecord("notificationCenterForType(name as string) as NSDistributedNotificationCenterQZL",
                 notificationCenterForType),
};

} // namespace

REALclassDefinition gNSDistributedNotificationCenterClass = {
    .name = "NSDistributedNotificationCenterQZL",
    .superName = "NSNotificationCenterQZL",
    .methods = gMethods,
    .constants = gConstants,
    .sharedMethods = gSharedMethods,
};

REALobject NewNSDistributedNotificationCenterQZL(NSDistributedNotificationCenter *center)
{
    return NewRegisteredWrapper(center, "NSDistributedNotificationCenterQZL");
}

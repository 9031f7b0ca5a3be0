// The host class NSNotificationCenterQZL: observes and posts through a Cocoa notification centre.
#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include "bridge/instance_data.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

void postNotificationName1(REALobject self, REALstring name)
{
    GuardCocoaCalls([&] {
        [WrapperHandle<NSNotificationCenter>(self) postNotificationName:NewNSString(name) object:nil];
    });
}

void postNotificationName2(REALobject self, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, nullptr);
        [WrapperHandle<NSNotificationCenter>(self) postNotificationName:arguments.name
                                                                 object:arguments.object];
    });
}

void postNotificationName3(REALobject self, REALstring name, REALobject theObject, REALdictionary userInfo)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, userInfo);
        [WrapperHandle<NSNotificationCenter>(self) postNotificationName:arguments.name
                                                                 object:arguments.object
                                                               userInfo:arguments.userInfo];
    });
}

/// A new instance wraps the process's default centre.
void Constructor(REALobject self)
{
    GuardCocoaCalls([&] {
        PrepareCocoaExceptionBridge();
        if (!ConstructorCalledTooOften(self))
            AdoptHandle(self, [[NSNotificationCenter defaultCenter] retain]);
    });
}

void postNotification(REALobject self, REALobject notification)
{
    GuardCocoaCalls(
        [&] { [WrapperHandle<NSNotificationCenter>(self) postNotification:WrapperHandle(notification)]; });
}

void removeObserver1(REALobject self, REALobject observer)
{
    GuardCocoaCalls(
        [&] { [WrapperHandle<NSNotificationCenter>(self) removeObserver:WrapperHandle(observer)]; });
}

void removeObserver2(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [WrapperHandle<NSNotificationCenter>(self) removeObserver:arguments.observer
                                                             name:arguments.name
                                                           object:arguments.object];
    });
}

void addObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        if (ObserverIsMissing(observer))
            return;
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [WrapperHandle<NSNotificationCenter>(self) addObserver:arguments.observer
                                                      selector:@selector(GotNotification:)
                                                          name:arguments.name
                                                        object:arguments.object];
    });
}

/// Each call returns a new instance, which is not registered.
REALobject defaultCenter()
{
    PrepareCocoaExceptionBridge();
    return GuardCocoaCalls([] {
        return NewNSObjectQZL([NSNotificationCenter defaultCenter], objc_getClass("NSNotificationCenter"));
    });
}

alignas(kRecordAlignment) REALpropertyRecord gProperties[] = {
    kHandleProperty,
};

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    MethodRecord("postNotificationName(name as string)", postNotificationName1),
    MethodRecord("postNotificationName(name as string, theObject as variant)", postNotificationName2),
    MethodRecord("postNotificationName(name as string, theObject as variant, userInfo as dictionary)",
                 postNotificationName3),
    MethodRecord("Constructor", Constructor),
    MethodRecord("postNotification(notification as NSNotificationQZL)", postNotification),
    MethodRecord("removeObserver(observer as NSNotificationObserverQZL)", removeObserver1),
    MethodRecord(
        "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
        removeObserver2),
    MethodRecord(
        "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
        addObserver),
};

alignas(kRecordAlignment) REALmethodRecord gSharedMethods[] = {
    MethodRecord("defaultCenter as NSNotificationCenterQZL", defaultCenter),
};

} // namespace

REALclassDefinition gNSNotificationCenterClass = {
    .name = "NSNotificationCenterQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .properties = gProperties,
    .methods = gMethods,
    .sharedMethods = gSharedMethods,
};

// The host class NSNotificationCenterQZL: observes and posts through a Cocoa notification centre.
#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <iterator>

#include "bridge/instance_data.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

/// Nil for an instance without a handle: messages to it then do nothing.
NSNotificationCenter *Center(REALobject self)
{
    return WrapperHandle(self);
}

void postNotificationName1(REALobject self, REALstring name)
{
    GuardCocoaCalls([&] { [Center(self) postNotificationName:NewNSString(name) object:nil]; });
}

void postNotificationName2(REALobject self, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, nullptr);
        [Center(self) postNotificationName:arguments.name object:arguments.object];
    });
}

void postNotificationName3(REALobject self, REALstring name, REALobject theObject, REALdictionary userInfo)
{
    GuardCocoaCalls([&] {
        const PostArguments arguments = ConvertPostArguments(name, theObject, userInfo);
        [Center(self) postNotificationName:arguments.name
                                    object:arguments.object
                                  userInfo:arguments.userInfo];
    });
}

/// A plain new centre is the process's default centre.
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
    GuardCocoaCalls([&] { [Center(self) postNotification:WrapperHandle(notification)]; });
}

void removeObserver1(REALobject self, REALobject observer)
{
    GuardCocoaCalls([&] { [Center(self) removeObserver:WrapperHandle(observer)]; });
}

void removeObserver2(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [Center(self) removeObserver:arguments.observer name:arguments.name object:arguments.object];
    });
}

void addObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        if (ObserverIsMissing(observer))
            return;
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [Center(self) addObserver:arguments.observer
                         selector:@selector(GotNotification:)
                             name:arguments.name
                           object:arguments.object];
    });
}

/// Each call gives a new instance, which the registry does not know.
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
    {.function = reinterpret_cast<void *>(postNotificationName1),
     .declaration = "postNotificationName(name as string)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(postNotificationName2),
     .declaration = "postNotificationName(name as string, theObject as variant)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(postNotificationName3),
     .declaration = "postNotificationName(name as string, theObject as variant, userInfo as dictionary)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(Constructor), .declaration = "Constructor", .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(postNotification),
     .declaration = "postNotification(notification as NSNotificationQZL)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(removeObserver1),
     .declaration = "removeObserver(observer as NSNotificationObserverQZL)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(removeObserver2),
     .declaration =
         "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(addObserver),
     .declaration =
         "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
     .flags = kMethodFlags},
};

alignas(kRecordAlignment) REALmethodRecord gSharedMethods[] = {
    {.function = reinterpret_cast<void *>(defaultCenter),
     .declaration = "defaultCenter as NSNotificationCenterQZL",
     .flags = kMethodFlags},
};

} // namespace

REALclassDefinition gNSNotificationCenterClass = {
    .version = kLatestRecordVersion,
    .name = "NSNotificationCenterQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .properties = gProperties,
    .propertyCount = std::size(gProperties),
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .flags = kClassFlags,
    .sharedMethods = gSharedMethods,
    .sharedMethodCount = std::size(gSharedMethods),
};

// The host class NSNotificationQZL: a notification's name, object and user info.
#include "notifications/NSNotificationQZL.h"

#import <Foundation/Foundation.h>

#include <iterator>

#include "bridge/instance_data.h"
#include "bridge/to_host/dictionary_to_host.h"
#include "bridge/to_host/object_to_variant.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "frame/errors.h"
#include "frame/host_strings.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

/// Nil for an instance without a handle: messages to it then give the empty value.
NSNotification *Notification(REALobject self)
{
    return WrapperHandle(self);
}

/// An autoreleased notification of host values, converted in this order.
NSNotification *MakeNotification(REALstring name, REALobject theObject, REALdictionary userInfo)
{
    const PostArguments arguments = ConvertPostArguments(name, theObject, userInfo);
    return [NSNotification notificationWithName:arguments.name
                                         object:arguments.object
                                       userInfo:arguments.userInfo];
}

REALdictionary userInfo(REALobject self, int64_t)
{
    return GuardCocoaCalls([&] { return NSDictionaryRB([Notification(self) userInfo]); });
}

REALstring Name(REALobject self, int64_t)
{
    return GuardCocoaCalls([&] { return CFString2RBString((CFStringRef)[Notification(self) name]); });
}

REALstring Description(REALobject self, int64_t)
{
    return GuardCocoaCalls([&] { return CFString2RBString((CFStringRef)[Notification(self) description]); });
}

int64_t objectHandle(REALobject self, int64_t)
{
    return GuardCocoaCalls([&] { return reinterpret_cast<int64_t>([Notification(self) object]); });
}

REALobject objectVariant(REALobject self, int64_t)
{
    return GuardCocoaCalls([&] { return NewVariantFromNSObject([Notification(self) object]); });
}

void Print(REALobject self)
{
    GuardCocoaCalls([&] { NSLog(@"%@\n", Notification(self)); });
}

void ConstructorWithHandle(REALobject self, int64_t handle)
{
    GuardCocoaCalls([&] {
        PrepareCocoaExceptionBridge();
        if (ConstructorCalledTooOften(self))
            return;
        if (handle == 0) {
            RaiseException("NilObjectException", "Handle is zero");
            return;
        }
        AdoptHandle(self, [reinterpret_cast<id>(handle) retain]);
    });
}

void Constructor(REALobject self, REALstring name, REALobject theObject, REALdictionary userInfo)
{
    GuardCocoaCalls([&] {
        PrepareCocoaExceptionBridge();
        if (!ConstructorCalledTooOften(self))
            AdoptHandle(self, [MakeNotification(name, theObject, userInfo) retain]);
    });
}

REALobject notificationWithName(REALstring name, REALobject theObject, REALdictionary userInfo)
{
    return GuardCocoaCalls([&] { return NewNSNotificationQZL(MakeNotification(name, theObject, userInfo)); });
}

alignas(kRecordAlignment) REALpropertyRecord gProperties[] = {
    kHandleProperty,
    {.name = "userInfo",
     .type = "Dictionary",
     .flags = kPropertyFlags,
     .getter = {reinterpret_cast<void *>(userInfo)}},
    {.name = "Name", .type = "String", .flags = kPropertyFlags, .getter = {reinterpret_cast<void *>(Name)}},
    {.name = "Description",
     .type = "String",
     .flags = kPropertyFlags,
     .getter = {reinterpret_cast<void *>(Description)}},
    {.name = "objectHandle",
     .type = "Integer",
     .flags = kPropertyFlags,
     .getter = {reinterpret_cast<void *>(objectHandle)}},
    {.name = "objectVariant",
     .type = "Variant",
     .flags = kPropertyFlags,
     .getter = {reinterpret_cast<void *>(objectVariant)}},
};

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    {.function = reinterpret_cast<void *>(DummyException),
     .declaration = "_exception as NSExceptionQZL",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(Print), .declaration = "Print", .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(ConstructorWithHandle),
     .declaration = "Constructor(handle as integer)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(Constructor),
     .declaration = "Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)",
     .flags = kMethodFlags},
};

alignas(kRecordAlignment) REALmethodRecord gSharedMethods[] = {
    {.function = reinterpret_cast<void *>(notificationWithName),
     .declaration =
         "notificationWithName(name as string, theObject as variant = nil, userInfo as dictionary = nil) "
         "as NSNotificationQZL",
     .flags = kMethodFlags},
};

} // namespace

REALclassDefinition gNSNotificationClass = {
    .version = kLatestRecordVersion,
    .name = "NSNotificationQZL",
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

REALobject NewNSNotificationQZL(NSNotification *notification)
{
    return NewRegisteredWrapper(notification, "NSNotificationQZL");
}

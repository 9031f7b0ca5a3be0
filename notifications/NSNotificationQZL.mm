// The host class NSNotificationQZL: a notification's name, object and user info.
#include "notifications/NSNotificationQZL.h"

#import <Foundation/Foundation.h>

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
    return GuardCocoaCalls([&] { return NSDictionaryRB([WrapperHandle<NSNotification>(self) userInfo]); });
}

REALstring Name(REALobject self, int64_t)
{
    return GuardCocoaCalls(
        [&] { return CFString2RBString((CFStringRef)[WrapperHandle<NSNotification>(self) name]); });
}

REALstring Description(REALobject self, int64_t)
{
    return GuardCocoaCalls(
        [&] { return CFString2RBString((CFStringRef)[WrapperHandle<NSNotification>(self) description]); });
}

int64_t objectHandle(REALobject self, int64_t)
{
    return GuardCocoaCalls(
        [&] { return reinterpret_cast<int64_t>([WrapperHandle<NSNotification>(self) object]); });
}

REALobject objectVariant(REALobject self, int64_t)
{
    return GuardCocoaCalls(
        [&] { return NewVariantFromNSObject([WrapperHandle<NSNotification>(self) object]); });
}

void Print(REALobject self)
{
    GuardCocoaCalls([&] { NSLog(@"%@\n", WrapperHandle<NSNotification>(self)); });
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
    PropertyRecord("userInfo", "Dictionary", userInfo),
    PropertyRecord("Name", "String", Name),
    PropertyRecord("Description", "String", Description),
    PropertyRecord("objectHandle", "Integer", objectHandle),
    PropertyRecord("objectVariant", "Variant", objectVariant),
};

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    MethodRecord("_exception as NSExceptionQZL", DummyException),
    MethodRecord("Print", Print),
    MethodRecord("Constructor(handle as integer)", ConstructorWithHandle),
    MethodRecord("Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)",
                 Constructor),
};

alignas(kRecordAlignment) REALmethodRecord gSharedMethods[] = {
    MethodRecord(
        "notificationWithName(name as string, theObject as variant = nil, userInfo as dictionary = nil) "
        "as NSNotificationQZL",
        notificationWithName),
};

} // namespace

REALclassDefinition gNSNotificationClass = {
    .name = "NSNotificationQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .properties = gProperties,
    .methods = gMethods,
    .sharedMethods = gSharedMethods,
};

REALobject NewNSNotificationQZL(NSNotification *notification)
{
    return NewRegisteredWrapper(notification, "NSNotificationQZL");
}

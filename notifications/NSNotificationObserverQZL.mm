// The host class NSNotificationObserverQZL: owns the Cocoa observer that receives notifications for it.
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <InstantMessage/IMService.h>

#include "bridge/instance_data.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"
#include "notifications/observer_event.h"

namespace {

void Constructor(REALobject self)
{
    GuardCocoaCalls([&] {
        if (ConstructorCalledTooOften(self))
            return;
        PrepareCocoaExceptionBridge();
        AdoptHandle(self, [[NSNotificationObserver alloc] initWithTarget:self]);
    });
}

/// Withdraws the observer from these four centres and no others.
void Destructor(REALobject self)
{
    const id observer = WrapperHandle(self);
    if (observer == nil)
        return;
    GuardCocoaCalls([&] {
        [[NSDistributedNotificationCenter defaultCenter] removeObserver:observer];
        [[NSNotificationCenter defaultCenter] removeObserver:observer];
        [[IMService notificationCenter] removeObserver:observer];
        [[[NSWorkspace sharedWorkspace] notificationCenter] removeObserver:observer];
    });
}

alignas(kRecordAlignment) REALpropertyRecord gProperties[] = {
    kHandleProperty,
};

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    MethodRecord("Constructor", Constructor),
    MethodRecord("Destructor", Destructor),
};

} // namespace

REALclassDefinition gNSNotificationObserverClass = {
    .name = "NSNotificationObserverQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .properties = gProperties,
    .methods = gMethods,
    .events = gObserverEvents,
};

// The host class NSNotificationObserverQZL: owns a Cocoa observer and turns its notifications into events.
#include "notifications/NSNotificationObserverQZL.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <InstantMessage/IMService.h>

#include <iterator>

#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "frame/host_ref.h"
#include "frame/plugin.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/NSNotificationQZL.h"
#include "notifications/classes.h"
#include "notifications/members.h"

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
    {.function = reinterpret_cast<void *>(Constructor), .declaration = "Constructor", .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(Destructor), .declaration = "Destructor", .flags = kMethodFlags},
};

alignas(kRecordAlignment) REALeventRecord gEvents[] = {
    {.declaration = "GotNotification(notification as NSNotificationQZL)"},
};

/// The key under which the host knows the event. Under the oldest record version the host leaves the address
/// of a record of its own, whose second word is the key.
void *GotNotificationKey()
{
    constexpr int64_t kVersionWithHostRecord = 9;
    const uint64_t key = gEvents[0].key;
    if (CurrentREALControlVersion != kVersionWithHostRecord)
        return reinterpret_cast<void *>(key);
    return reinterpret_cast<void *const *>(key)[1];
}

} // namespace

REALclassDefinition gNSNotificationObserverClass = {
    .version = kLatestRecordVersion,
    .name = "NSNotificationObserverQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .properties = gProperties,
    .propertyCount = std::size(gProperties),
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .events = gEvents,
    .eventCount = std::size(gEvents),
    .flags = kClassFlags,
};

void RaiseGotNotification(REALobject observer, NSNotification *notification)
{
    using Handler = void (*)(REALobject observer, REALobject notification);
    const auto handler = reinterpret_cast<Handler>(REALGetEventInstance(observer, GotNotificationKey()));
    if (handler == nullptr)
        return;
    HostRef<REALobject> wrapper(NewNSNotificationQZL(notification));
    handler(observer, wrapper.Get());
    wrapper.GiveBack();
}

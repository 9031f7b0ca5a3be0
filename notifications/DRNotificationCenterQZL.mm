// The host class DRNotificationCenterQZL: observes the disc-recording framework.
#import <DiscRecording/DiscRecording.h>
#import <Foundation/Foundation.h>

#include <iterator>

#include "bridge/instance_data.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

/// Nil for an instance without a handle: messages to it then do nothing.
DRNotificationCenter *Center(REALobject self)
{
    return WrapperHandle(self);
}

void removeObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [Center(self) removeObserver:arguments.observer name:arguments.name object:arguments.object];
    });
}

/// A missing observer is Cocoa's to judge here.
void addObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [Center(self) addObserver:arguments.observer
                         selector:@selector(GotNotification:)
                             name:arguments.name
                           object:arguments.object];
    });
}

/// The centre of the run loop of the thread that it is called on.
void Constructor(REALobject self)
{
    GuardCocoaCalls([&] {
        if (ConstructorCalledTooOften(self))
            return;
        PrepareCocoaExceptionBridge();
        AdoptHandle(self, [[DRNotificationCenter currentRunLoopCenter] retain]);
    });
}

alignas(kRecordAlignment) REALmethodRecord gMethods[] = {
    {.function = reinterpret_cast<void *>(removeObserver),
     .declaration =
         "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(addObserver),
     .declaration =
         "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
     .flags = kMethodFlags},
    {.function = reinterpret_cast<void *>(Constructor), .declaration = "Constructor", .flags = kMethodFlags},
};

} // namespace

REALclassDefinition gDRNotificationCenterClass = {
    .version = kLatestRecordVersion,
    .name = "DRNotificationCenterQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .flags = kClassFlags,
};

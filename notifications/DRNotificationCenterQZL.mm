// The host class DRNotificationCenterQZL: observes the disc-recording framework.
#import <DiscRecording/DiscRecording.h>
#import <Foundation/Foundation.h>

#include "bridge/instance_data.h"
#include "bridge/to_host/wrappers.h"
#include "frame/cocoa_exceptions.h"
#include "notifications/NSNotificationObserver.h"
#include "notifications/classes.h"
#include "notifications/members.h"

namespace {

void removeObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [WrapperHandle<DRNotificationCenter>(self) removeObserver:arguments.observer
                                                             name:arguments.name
                                                           object:arguments.object];
    });
}

/// Unlike the other centres, leaves a missing observer to Cocoa.
void addObserver(REALobject self, REALobject observer, REALstring name, REALobject theObject)
{
    GuardCocoaCalls([&] {
        const ObserverArguments arguments = ConvertObserverArguments(observer, name, theObject);
        [WrapperHandle<DRNotificationCenter>(self) addObserver:arguments.observer
                                                      selector:@selector(GotNotification:)
                                                          name:arguments.name
                                                        object:arguments.object];
    });
}

/// A new instance wraps the centre of the calling thread's run loop.
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
    MethodRecord(
        "removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
        removeObserver),
    MethodRecord(
        "addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
        addObserver),
    MethodRecord("Constructor", Constructor),
};

} // namespace

REALclassDefinition gDRNotificationCenterClass = {
    .name = "DRNotificationCenterQZL",
    .dataSize = sizeof(WrapperData),
    .constructor = WrapperConstructorHook,
    .destructor = WrapperDestructorHook,
    .methods = gMethods,
};

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

/// A missing observer is left to Cocoa here.
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

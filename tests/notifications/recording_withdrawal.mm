// Puts centres that record in the places of four of Cocoa's.
#include "tests/notifications/recording_withdrawal.h"

#import <AppKit/AppKit.h>

namespace {

QZLRecordingCenter *gDistributed;
QZLRecordingCenter *gDefault;
QZLRecordingCenter *gService;
QZLRecordingCenter *gWorkspace;

id Distributed(id, SEL)
{
    return gDistributed;
}

id Default(id, SEL)
{
    return gDefault;
}

id Service(id, SEL)
{
    return gService;
}

id Workspace(id, SEL)
{
    return gWorkspace;
}

/// Also where the test hides the class from the library.
Method ClassMethod(const char *className, SEL selector)
{
    return class_getClassMethod(objc_lookUpClass(className), selector);
}

} // namespace

std::vector<std::string> MessagesToTheFourCenters(RecordedMessages &recorded,
                                                  const std::function<void()> &body)
{
    gDistributed = recorded.NewCenter("distributed");
    gDefault = recorded.NewCenter("default");
    gService = recorded.NewCenter("service");
    gWorkspace = recorded.NewCenter("workspace");
    // Made before, since it asks for centres of its own.
    NSWorkspace *const workspace = [NSWorkspace sharedWorkspace];
    const SwappedMethod distributed(ClassMethod("NSDistributedNotificationCenter", @selector(defaultCenter)),
                                    reinterpret_cast<IMP>(Distributed));
    const SwappedMethod process(ClassMethod("NSNotificationCenter", @selector(defaultCenter)),
                                reinterpret_cast<IMP>(Default));
    const SwappedMethod service(ClassMethod("IMService", @selector(notificationCenter)),
                                reinterpret_cast<IMP>(Service));
    const SwappedMethod workspaces(class_getInstanceMethod([workspace class], @selector(notificationCenter)),
                                   reinterpret_cast<IMP>(Workspace));
    recorded.Take();
    body();
    return recorded.Take();
}

// Replaces four of Cocoa's centres by recording ones.
#include "tests/support/recording_withdrawal.h"

#import <AppKit/AppKit.h>

#include "tests/support/replaced_method.h"

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

/// Finds the class even where the test hides it from the library.
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
    // Made first, since it asks for centres itself.
    NSWorkspace *const workspace = [NSWorkspace sharedWorkspace];
    const ReplacedMethod distributed(ClassMethod("NSDistributedNotificationCenter", @selector(defaultCenter)),
                                     &Distributed);
    const ReplacedMethod process(ClassMethod("NSNotificationCenter", @selector(defaultCenter)), &Default);
    const ReplacedMethod service(ClassMethod("IMService", @selector(notificationCenter)), &Service);
    const ReplacedMethod workspaces(class_getInstanceMethod([workspace class], @selector(notificationCenter)),
                                    &Workspace);
    recorded.Take();
    body();
    return recorded.Take();
}

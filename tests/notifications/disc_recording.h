// Posts at the disc-recording framework's centre, which only the framework itself can do on macOS.
#pragma once

#import <DiscRecording/DiscRecording.h>
#import <Foundation/Foundation.h>

#include "platform/gnustep/DRNotificationCenterPosting.h"

inline void PostToDiscRecording(NSString *name, id object = nil)
{
    DRNotificationCenterPost([DRNotificationCenter currentRunLoopCenter],
                             [NSNotification notificationWithName:name object:object]);
}

// A Cocoa observer that keeps every notification.
#pragma once

#import <Foundation/Foundation.h>

@interface QZLRecordingObserver : NSObject {
@public
    NSMutableArray *received;
}
- (void)receive:(NSNotification *)notification;
@end

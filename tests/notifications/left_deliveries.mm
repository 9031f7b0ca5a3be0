// Lets an exception leave a delivery of GNUstep's, with nothing of the library in it.
#include "tests/notifications/left_deliveries.h"

#import <Foundation/Foundation.h>

#include "tests/support/leak_check_pause.h"
#include "tests/support/throwing.h"

@interface QZLTestThrower : NSObject
@end

@implementation QZLTestThrower
- (void)receive:(NSNotification *)notification
{
    ThrowForTest();
}
@end

bool CenterKeepsThrowingObservers()
{
    const LeakCheckPause pause;
    QZLTestThrower *const observer = [[QZLTestThrower alloc] init];
    NSNotificationCenter *const center = [[NSNotificationCenter alloc] init];
    [center addObserver:observer selector:@selector(receive:) name:@"Throws" object:nil];
    EndsThrown([&] { [center postNotificationName:@"Throws" object:nil]; });
    [center removeObserver:observer];
    return [observer retainCount] > 1;
}

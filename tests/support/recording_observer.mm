// A Cocoa observer that keeps every notification.
#include "tests/support/recording_observer.h"

@implementation QZLRecordingObserver
- (instancetype)init
{
    self = [super init];
    received = [[NSMutableArray alloc] init];
    return self;
}
- (void)dealloc
{
    [received release];
    [super dealloc];
}
- (void)receive:(NSNotification *)notification
{
    [received addObject:notification];
}
@end

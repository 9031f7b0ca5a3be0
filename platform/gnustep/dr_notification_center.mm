// The disc-recording notification centre: one per thread, each around a centre of its own.
#import <DiscRecording/DiscRecording.h>

#include "platform/gnustep/DRNotificationCenterPosting.h"

namespace {

NSString *const kThreadKey = @"CocoaportDRNotificationCenter";

} // namespace

@implementation DRNotificationCenter

+ (DRNotificationCenter *)currentRunLoopCenter
{
    NSMutableDictionary *const threadDictionary = [[NSThread currentThread] threadDictionary];
    DRNotificationCenter *current = [threadDictionary objectForKey:kThreadKey];
    if (current == nil) {
        current = [[[self alloc] init] autorelease];
        [threadDictionary setObject:current forKey:kThreadKey];
    }
    return current;
}

- (id)init
{
    self = [super init];
    if (self != nil)
        center = [[NSNotificationCenter alloc] init];
    return self;
}

- (void)dealloc
{
    [center release];
    [super dealloc];
}

- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object
{
    [center addObserver:observer selector:selector name:name object:object];
}

- (void)removeObserver:(id)observer name:(NSString *)name object:(id)object
{
    [center removeObserver:observer name:name object:object];
}

// Inside the implementation, where the instance variable is visible.
void DRNotificationCenterPost(DRNotificationCenter *center, NSNotification *notification)
{
    [center->center postNotification:notification];
}

@end

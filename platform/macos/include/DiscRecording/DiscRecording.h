// The disc-recording notification centre, which is not an NSNotificationCenter.
#ifndef QZL_DISCRECORDING_H
#define QZL_DISCRECORDING_H

#import <Foundation/Foundation.h>

@interface DRNotificationCenter : NSObject
+ (DRNotificationCenter *)currentRunLoopCenter;
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object;
- (void)removeObserver:(id)observer name:(NSString *)name object:(id)object;
@end

#endif

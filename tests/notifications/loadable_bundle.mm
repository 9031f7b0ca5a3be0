// Code of a bundle that a test loads.
#import <Foundation/Foundation.h>

@interface QZLLoadedClass : NSObject
@end

@implementation QZLLoadedClass
@end

// The two booleans: the objects that +[NSNumber numberWithBool:] gives.
#import <Foundation/NSAutoreleasePool.h>
#import <Foundation/NSObject.h>
#import <Foundation/NSValue.h>

// Constants to all other files, which is why their declarations are not seen here.
extern "C" {
NSNumber *kCFBooleanTrue;
NSNumber *kCFBooleanFalse;
}

@interface CocoaportBooleans : NSObject
@end

@implementation CocoaportBooleans

+ (void)load
{
    @autoreleasepool {
        kCFBooleanTrue = [[NSNumber numberWithBool:YES] retain];
        kCFBooleanFalse = [[NSNumber numberWithBool:NO] retain];
    }
}

@end

// The two booleans: the objects that +[NSNumber numberWithBool:] gives.
#import <Foundation/NSAutoreleasePool.h>
#import <Foundation/NSObject.h>
#import <Foundation/NSValue.h>

// Other files see constants, so this one cannot include their declarations.
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

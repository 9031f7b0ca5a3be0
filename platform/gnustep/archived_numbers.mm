// Lets booleans stay booleans in archives, in which user infos travel between processes.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstring>

namespace {

/// Stands in for -[NSNumber initWithCoder:]: returns `self` or another number in its place, with one retain.
/// GNUstep archives the type and the content; only a boolean's type is a character.
id InitWithCoder(NSNumber *self, SEL, NSCoder *coder)
{
    char type[2] = {};
    [coder decodeValueOfObjCType:@encode(char) at:type];
    if (type[0] == '\0' || std::strchr("cCsSiIlLqQfd", type[0]) == nullptr)
        [NSException raise:NSInternalInconsistencyException format:@"a number of type '%s'", type];
    alignas(long long) unsigned char content[sizeof(long long)] = {};
    [coder decodeValueOfObjCType:type at:content];
    if (type[0] != 'c' && type[0] != 'C')
        return [self initWithBytes:content objCType:type];
    [self release];
    return [[NSNumber numberWithBool:content[0] != 0] retain];
}

} // namespace

@interface CocoaportArchivedNumbers : NSObject
@end

@implementation CocoaportArchivedNumbers

+ (void)load
{
    method_setImplementation(class_getInstanceMethod([NSNumber class], @selector(initWithCoder:)),
                             reinterpret_cast<IMP>(InitWithCoder));
}

@end

// Recognises classes that inherit NSObject's `isKindOfClass:`.
#pragma once

#import <Foundation/Foundation.h>

#include "frame/kept_look_ups.h"

/// NSObject's methods as they were at first use. One that is replaced later counts as another method.
inline IMP gRootInstanceMethodForSelector;
inline IMP gRootIsKindOfClass;

/// Whether objects of the class have NSObject's own `isKindOfClass:` now. Neither the class nor its objects
/// receive a message. Any thread.
inline bool InheritsRootIsKindOfClass(Class type)
{
    using FindMethod = IMP (*)(Class, SEL, SEL);
    const SEL find = @selector(instanceMethodForSelector:);
    const SEL isKindOfClass = @selector(isKindOfClass:);
    const IMP findMethod = KeepFound(gRootInstanceMethodForSelector, [] {
        return [NSObject methodForSelector:@selector(instanceMethodForSelector:)];
    });
    const IMP method = reinterpret_cast<FindMethod>(findMethod)(type, find, isKindOfClass);
    return method == KeepFound(gRootIsKindOfClass,
                               [] { return [NSObject instanceMethodForSelector:@selector(isKindOfClass:)]; });
}

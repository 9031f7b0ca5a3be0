// Tells classes whose objects answer for themselves of which classes they are from those that leave it to the
// root class.
#pragma once

#import <Foundation/Foundation.h>

#include "frame/kept_look_ups.h"

/// NSObject's methods as they were at first use: one that takes the place of another later is another one.
inline IMP gRootInstanceMethodForSelector;
inline IMP gRootIsKindOfClass;

/// Whether objects of the class answer `isKindOfClass:` by NSObject's own method, now. The class is not
/// asked, nor are its objects. Any thread.
inline bool LeavesItsKindToTheRootClass(Class type)
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

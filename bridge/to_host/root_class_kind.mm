// Tells classes whose objects answer for themselves of which classes they are.
#include "bridge/to_host/root_class_kind.h"

#import <Foundation/Foundation.h>

#include "frame/kept_function.h"

namespace {

/// NSObject's method as it was at first use, kept in `slot`: one that takes its place later is another one.
IMP RootMethod(IMP &slot, SEL selector)
{
    return KeepFound(slot, [&] { return [NSObject instanceMethodForSelector:selector]; });
}

/// The method of the class's objects now, found as NSObject finds it, whatever the class would answer.
IMP MethodOf(Class type, SEL selector)
{
    static IMP kept = nullptr;
    const SEL find = @selector(instanceMethodForSelector:);
    const IMP method = KeepFound(kept, [&] { return [NSObject methodForSelector:find]; });
    return reinterpret_cast<IMP (*)(Class, SEL, SEL)>(method)(type, find, selector);
}

bool HasRootMethod(Class type, IMP &slot, SEL selector)
{
    return MethodOf(type, selector) == RootMethod(slot, selector);
}

} // namespace

bool LeavesItsKindToTheRootClass(Class type)
{
    static IMP isKindOfClass = nullptr;
    static IMP ownClass = nullptr;
    return HasRootMethod(type, isKindOfClass, @selector(isKindOfClass:)) &&
           HasRootMethod(type, ownClass, @selector(class));
}

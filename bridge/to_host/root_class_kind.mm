// Tells objects that answer for themselves of which classes they are from those that leave it to the root
// class.
#include "bridge/to_host/root_class_kind.h"

#import <Foundation/Foundation.h>

#include "frame/kept_function.h"

namespace {

/// NSObject's method as it was at first use, kept in `slot`: one that takes its place later is another one.
IMP RootMethod(IMP &slot, SEL selector)
{
    return KeepFound(slot, [&] { return [NSObject instanceMethodForSelector:selector]; });
}

/// The object's method now, found as NSObject finds it, whatever the object would answer.
IMP MethodOf(id object, SEL selector)
{
    static IMP kept = nullptr;
    const SEL find = @selector(methodForSelector:);
    return reinterpret_cast<IMP (*)(id, SEL, SEL)>(RootMethod(kept, find))(object, find, selector);
}

bool HasRootMethod(id object, IMP &slot, SEL selector)
{
    return MethodOf(object, selector) == RootMethod(slot, selector);
}

} // namespace

bool LeavesItsKindToTheRootClass(id object)
{
    static IMP isKindOfClass = nullptr;
    static IMP ownClass = nullptr;
    return HasRootMethod(object, isKindOfClass, @selector(isKindOfClass:)) &&
           HasRootMethod(object, ownClass, @selector(class));
}

// Turns a Cocoa object into a host value: a chain of tests whose order matters.
#include "bridge/to_host/object_to_variant.h"

#import <Foundation/Foundation.h>

#include <optional>

#include "bridge/to_host/conversion_steps.h"
#include "bridge/to_host/core_foundation_wrappers.h"
#include "bridge/to_host/wrappers.h"
#include "frame/host_entry_points.h"
#include "frame/instance_registry.h"
#include "frame/kept_look_ups.h"

/// A method that Cocoa's objects have and its headers lack.
@interface NSObject (QZLCoreFoundationType)
/// The object's Core Foundation type.
- (CFTypeID)_cfTypeID;
@end

namespace {

/// The one object that stands for nothing in collections.
id TheNull()
{
    static void *null;
    return static_cast<id>(KeepFound(null, [] { return [NSNull null]; }));
}

/// The wrapper of an object that reports a Core Foundation type, with one reference for the caller, or null.
/// No value for any other object, and for one that raises.
std::optional<REALobject> ConvertAsCoreFoundation(id object)
{
    @try {
        if ([object respondsToSelector:@selector(_cfTypeID)] && static_cast<int32_t>([object _cfTypeID]) > 0)
            return NewCFWrapper(object, CFWrapperClassName(object));
    } @catch (NSException *) {
        return std::nullopt;
    }
    return std::nullopt;
}

/// Converts an object that takes none of the steps.
__attribute__((noinline)) REALobject ConvertOtherwise(id object)
{
    if (const std::optional<REALobject> wrapper = ConvertAsCoreFoundation(object))
        return *wrapper;
    return NewWrapperOfAnyClass(object);
}

} // namespace

REALobject NewVariantFromNSObject(id object, const EnclosingContainers *enclosing)
{
    if (object == nil || object == TheNull())
        return nullptr;
    if (const REALobject known = FindInstance(object)) {
        REALLockObject(known);
        return known;
    }
    if (const ConversionStep *const step = FindConversionStep(object))
        return step->convert({object, step->name, enclosing});
    return ConvertOtherwise(object);
}

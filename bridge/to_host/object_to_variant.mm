// Turns a Cocoa object into a host value: a chain of tests whose order counts.
#include "bridge/to_host/object_to_variant.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <optional>

#include "bridge/to_host/array_to_host.h"
#include "bridge/to_host/class_rows.h"
#include "bridge/to_host/core_foundation_wrappers.h"
#include "bridge/to_host/date_to_host.h"
#include "bridge/to_host/dictionary_to_host.h"
#include "bridge/to_host/file_url_to_host.h"
#include "bridge/to_host/instance_registry.h"
#include "bridge/to_host/number_to_host.h"
#include "bridge/to_host/value_to_host.h"
#include "bridge/to_host/wrappers.h"
#include "frame/host_ref.h"
#include "frame/host_strings.h"
#include "frame/memory_blocks.h"

/// What objects answer that the compiler does not know.
@interface NSObject (QZLObjectToVariant)
/// The object's Core Foundation type.
- (CFTypeID)_cfTypeID;
/// The host object in the family's wrapper.
- (REALobject)unwrap;
@end

namespace {

bool IsOf(id object, Class cocoaClass)
{
    return [object isKindOfClass:cocoaClass];
}

/// Made even of the null string.
REALobject NewStringVariant(NSString *text)
{
    const HostRef<REALstring> string(CFString2RBString((CFStringRef)text));
    return REALNewVariantString(string.Get());
}

REALobject NewURLVariant(NSURL *url)
{
    const REALobject folderItem = NSURLRBFile(url);
    return folderItem != nullptr ? folderItem : NewStringVariant([url absoluteString]);
}

/// Whether the object is a host object in the family's wrapper, a class that may appear at any time.
bool IsWrappedHostObject(id object)
{
    const Class wrapperClass = objc_getClass("QZLREALobjectWrapper");
    return wrapperClass != Nil && IsOf(object, wrapperClass);
}

/// The wrapper of an object that says that it is a Core Foundation object: with one reference for the caller,
/// or null. Nothing for any other object, and for one that raises.
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

} // namespace

REALobject NewVariantFromNSObject(id object)
{
    if (object == nil || object == [NSNull null])
        return nullptr;
    if (const REALobject known = FindInstance(object)) {
        REALLockObject(known);
        return known;
    }
    if (IsOf(object, [NSURL class]))
        return NewURLVariant(object);
    if (IsOf(object, [NSString class]))
        return NewStringVariant(object);
    if (IsOf(object, [NSData class]))
        return AsInstance(NSDataRB(object));
    if (IsOf(object, [NSArray class]))
        return NewHostArray(object);
    if (IsOf(object, [NSSet class]))
        return NewHostArray([object allObjects]);
    if (object == (id)kCFBooleanFalse)
        return REALNewVariantBoolean(false);
    if (object == (id)kCFBooleanTrue)
        return REALNewVariantBoolean(true);
    if (IsOf(object, [NSNumber class]))
        return NewVariantFromNSNumber(object);
    if (IsOf(object, [NSDate class]))
        return NewHostDate(object);
    if (IsOf(object, [NSDictionary class]))
        return AsInstance(NSDictionaryRB(object));
    if (const std::optional<REALobject> wrapper = ConvertByClassRow(object))
        return *wrapper;
    if (IsWrappedHostObject(object))
        return [object unwrap];
    if (IsOf(object, [NSValue class]))
        return NewInstanceFromNSValue(object);
    if (const std::optional<REALobject> wrapper = ConvertAsCoreFoundation(object))
        return *wrapper;
    return NewWrapperOfAnyClass(object);
}

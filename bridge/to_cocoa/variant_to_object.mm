// Turns a host variant into a Cocoa object: strings so far, everything else gives nil.
#include "bridge/to_cocoa/variant_to_object.h"

#import <Foundation/Foundation.h>

#include "frame/host_ref.h"
#include "frame/host_strings.h"

namespace {

/// The type code of a variant, through the host's method or, where it has none, the variant's property.
int64_t GetVariantType(REALobject variant)
{
    static int64_t (*varType)(REALobject);
    auto found = __atomic_load_n(&varType, __ATOMIC_RELAXED);
    if (found == nullptr) {
        found = reinterpret_cast<int64_t (*)(REALobject)>(
            REALLoadFrameworkMethod(nullptr, "VarType(value As Variant) As Integer"));
        __atomic_store_n(&varType, found, __ATOMIC_RELAXED);
    }
    if (found != nullptr)
        return found(variant);
    int64_t type = 0;
    REALGetPropValueInteger(variant, "Type", &type);
    return type;
}

constexpr int64_t kString = 8;

/// Never nil: an empty string stands in for what gives none.
NSString *StringOfVariant(REALobject variant)
{
    const HostRef<REALstring> string(GetVariantString(variant));
    NSString *const text = NewNSString(string.Get());
    return text != nil ? text : @"";
}

} // namespace

id GetVariantAsNSObject(REALobject variant)
{
    if (variant == nullptr || GetVariantType(variant) != kString)
        return nil;
    return StringOfVariant(variant);
}

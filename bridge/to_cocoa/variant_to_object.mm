// Turns a host variant into a Cocoa object, by the variant's type code.
#include "bridge/to_cocoa/variant_to_object.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/array_to_cocoa.h"
#include "bridge/to_cocoa/date_to_cocoa.h"
#include "bridge/to_cocoa/object_to_cocoa.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "frame/host_references.h"
#include "frame/kept_look_ups.h"

namespace {

/// The type code of a variant, from the host's method or, if the host lacks it, from the variant's property.
int64_t GetVariantType(REALobject variant)
{
    static int64_t (*varType)(REALobject);
    const auto found = KeepFound(
        varType, [] { return REALLoadFrameworkMethod(nullptr, "VarType(value As Variant) As Integer"); });
    if (found != nullptr)
        return found(variant);
    int64_t type = 0;
    REALGetPropValueInteger(variant, "Type", &type);
    return type;
}

id ConvertLong(REALobject variant, const EnclosingContainers *)
{
    return [NSNumber numberWithLong:GetVariantInt64(variant)];
}

id ConvertLongLong(REALobject variant, const EnclosingContainers *)
{
    return [NSNumber numberWithLongLong:GetVariantInt64(variant)];
}

id ConvertSingle(REALobject variant, const EnclosingContainers *)
{
    return [NSNumber numberWithFloat:GetVariantSingle(variant)];
}

id ConvertDouble(REALobject variant, const EnclosingContainers *)
{
    return [NSNumber numberWithDouble:GetVariantDouble(variant)];
}

/// Only the low byte counts.
id ConvertBoolean(REALobject variant, const EnclosingContainers *)
{
    return [NSNumber numberWithBool:static_cast<BOOL>(static_cast<uint8_t>(GetVariantInt64(variant)))];
}

id ConvertDate(REALobject variant, const EnclosingContainers *)
{
    REALobject date = nullptr;
    if (!REALGetPropValueObject(variant, "DateValue", &date))
        return nil;
    HostRef<REALobject> owner(date);
    const id result = NewNSDate(date);
    owner.GiveBack();
    return result;
}

/// Never nil: a string without a Cocoa counterpart becomes the empty one.
id ConvertString(REALobject variant, const EnclosingContainers *)
{
    HostRef<REALstring> string(GetVariantString(variant));
    NSString *const text = NewNSString(string.Get());
    string.GiveBack();
    return text != nil ? text : @"";
}

constexpr struct {
    int64_t code;
    id (*convert)(REALobject variant, const EnclosingContainers *enclosing);
} kConversions[] = {
    {2, ConvertLong},     {3, ConvertLongLong}, {4, ConvertSingle},  {5, ConvertDouble},
    {6, ConvertDouble},   {7, ConvertDate},     {8, ConvertString},  {9, GetObjectAsNSObject},
    {11, ConvertBoolean}, {16, ConvertLong},    {18, ConvertString}, {19, ConvertString},
    {20, ConvertString},  {21, ConvertString},  {23, ConvertString}, {37, ConvertString},
};

/// The code of an array is this one plus the code of its elements.
constexpr int64_t kArrayCode = 4096;

} // namespace

id GetVariantAsNSObject(REALobject variant, const EnclosingContainers *enclosing)
{
    if (variant == nullptr)
        return nil;
    const int64_t code = GetVariantType(variant);
    if (code >= kArrayCode)
        return GetArrayAsNSObject(variant, code - kArrayCode, enclosing);
    for (const auto &conversion : kConversions)
        if (conversion.code == code)
            return conversion.convert(variant, enclosing);
    return nil;
}

// Reads host arrays into Cocoa arrays. Every host's arrays are read through its functions: older hosts'
// storage would be faster to read, but is private.
#include "bridge/to_cocoa/array_to_cocoa.h"

#import <Foundation/Foundation.h>

#include <type_traits>

#include "bridge/to_cocoa/date_to_cocoa.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "frame/cf_ref.h"
#include "frame/errors.h"
#include "frame/host_references.h"

namespace {

/// Holds an element that was read: one reference of an object, string or text, or a plain number.
template <typename Element>
class Held {
public:
    explicit Held(Element element) : element_(element) {}
    Element Get() const { return element_; }
    void GiveBack() {}

private:
    Element element_;
};

template <typename Handle>
class Held<Handle *> : public HostRef<Handle *> {
public:
    explicit Held(Handle *owned) : HostRef<Handle *>(owned) {}
};

id TextOrEmpty(NSString *text)
{
    return text != nil ? text : @"";
}

/// The text of a host text through a variant of it, with one retain for the caller; null if there is none.
__attribute__((cf_returns_retained)) CFStringRef CopyTextThroughVariant(REALtext text)
{
    HostRef<REALobject> variant(REALNewVariantText(text));
    if (!variant)
        return nullptr;
    HostRef<REALstring> string(GetVariantString(variant.Get()));
    CFRef<CFStringRef> result(REALGetStringCFString(string.Get(), 0));
    string.GiveBack();
    variant.GiveBack();
    return result.Release();
}

id ConvertInteger(int64_t number)
{
    return [NSNumber numberWithLong:number];
}

id ConvertInt64(int64_t number)
{
    return [NSNumber numberWithLongLong:number];
}

id ConvertSingle(float number)
{
    return [NSNumber numberWithFloat:number];
}

id ConvertDouble(double number)
{
    return [NSNumber numberWithDouble:number];
}

id ConvertBoolean(bool truth)
{
    return [NSNumber numberWithBool:truth];
}

id ConvertString(REALstring string)
{
    return TextOrEmpty(NewNSString(string));
}

id ConvertText(REALtext text)
{
    CFStringRef string = REALCopyTextCFString(text);
    if (string == nullptr)
        string = CopyTextThroughVariant(text);
    return TextOrEmpty([(NSString *)string autorelease]);
}

/// The element at an index. If the array lost it meanwhile, 0 or null, with the host exception raised.
template <typename Element>
Element ElementAt(Element (*read)(REALarray array, int64_t index), REALarray array, int64_t index)
{
    const int64_t bound = REALGetArrayUBound(array);
    if (bound >= index)
        return read(array, index);
    RaiseOutOfBoundsException(index, bound + 1);
    return Element();
}

/// The Cocoa array of a host array whose elements `Read` reads and `Convert` converts. Only a conversion that
/// may reach other containers receives what encloses its element.
template <auto Read, auto Convert>
id ConvertElements(REALobject instance, const EnclosingContainers *enclosing)
{
    if (Encloses(enclosing, instance))
        return nil;
    const EnclosingContainers here = {instance, enclosing};
    const auto array = reinterpret_cast<REALarray>(instance);
    NSMutableArray *const result = [NSMutableArray array];
    const int64_t bound = REALGetArrayUBound(array);
    for (int64_t index = 0; index <= bound; ++index) {
        Held element(ElementAt(Read, array, index));
        if constexpr (std::is_invocable_v<decltype(Convert), decltype(element.Get()), decltype(&here)>)
            [result addObject:Convert(element.Get(), &here)];
        else
            [result addObject:Convert(element.Get())];
        element.GiveBack();
    }
    return result;
}

constexpr struct {
    int64_t elementCode;
    id (*convert)(REALobject array, const EnclosingContainers *enclosing);
} kElementTypes[] = {
    // No row for 6, although a variant may have that code.
    {2, ConvertElements<REALGetArrayValueInteger, ConvertInteger>},
    {3, ConvertElements<REALGetArrayValueInt64, ConvertInt64>},
    {4, ConvertElements<REALGetArrayValueSingle, ConvertSingle>},
    {5, ConvertElements<REALGetArrayValueDouble, ConvertDouble>},
    {7, ConvertElements<REALGetArrayValueObject, NewNSDate>},
    {8, ConvertElements<REALGetArrayValueString, ConvertString>},
    {9, ConvertElements<REALGetArrayValueObject, GetVariantAsNSObject>},
    {11, ConvertElements<REALGetArrayValueBoolean, ConvertBoolean>},
    {37, ConvertElements<REALGetArrayValueText, ConvertText>},
};

} // namespace

id GetArrayAsNSObject(REALobject array, int64_t elementCode, const EnclosingContainers *enclosing)
{
    for (const auto &type : kElementTypes)
        if (type.elementCode == elementCode)
            return type.convert(array, enclosing);
    return nil;
}

// Reads host arrays into Cocoa arrays. Elements are read through the host's array readers on every host: the
// storage of older hosts' arrays, which would be quicker to read, is their private affair.
#include "bridge/to_cocoa/array_to_cocoa.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/date_to_cocoa.h"
#include "bridge/to_cocoa/string_to_cocoa.h"
#include "bridge/to_cocoa/variant_to_object.h"
#include "frame/cf_ref.h"
#include "frame/errors.h"
#include "frame/host_references.h"

namespace {

/// Holds what a reader gave: the reference of a string, object or text, or a plain number.
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
    using HostRef<Handle *>::HostRef;
};

/// The element type of a host array: how one is read, and what it becomes.
template <typename Element>
struct ElementType {
    Element (*read)(REALarray array, int64_t index);
    id (*convert)(Element element, const EnclosingContainers *enclosing);
};

template <typename Element>
Element ReadElement(const ElementType<Element> &type, REALarray array, int64_t index)
{
    const int64_t bound = REALGetArrayUBound(array);
    if (bound >= index)
        return type.read(array, index);
    RaiseOutOfBoundsException(index, bound + 1);
    return Element();
}

template <typename Element>
id ConvertArray(REALobject instance, const ElementType<Element> &type, const EnclosingContainers *enclosing)
{
    if (Encloses(enclosing, instance))
        return nil;
    const EnclosingContainers here = {instance, enclosing};
    const auto array = reinterpret_cast<REALarray>(instance);
    NSMutableArray *const result = [NSMutableArray array];
    const int64_t bound = REALGetArrayUBound(array);
    for (int64_t index = 0; index <= bound; ++index) {
        Held<Element> element(ReadElement(type, array, index));
        [result addObject:type.convert(element.Get(), &here)];
        element.GiveBack();
    }
    return result;
}

NSString *EmptyForNil(NSString *string)
{
    return string != nil ? string : @"";
}

/// The text of a host text through a variant of it, with one retain for the caller; null where there is none.
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

id ConvertText(REALtext text, const EnclosingContainers *)
{
    CFStringRef string = REALCopyTextCFString(text);
    if (string == nullptr)
        string = CopyTextThroughVariant(text);
    return EmptyForNil([(NSString *)string autorelease]);
}

constexpr ElementType<int64_t> kIntegers = {
    REALGetArrayValueInteger,
    [](int64_t element, const EnclosingContainers *) -> id { return [NSNumber numberWithLong:element]; }};
constexpr ElementType<int64_t> kInt64s = {
    REALGetArrayValueInt64,
    [](int64_t element, const EnclosingContainers *) -> id { return [NSNumber numberWithLongLong:element]; }};
constexpr ElementType<float> kSingles = {
    REALGetArrayValueSingle,
    [](float element, const EnclosingContainers *) -> id { return [NSNumber numberWithFloat:element]; }};
constexpr ElementType<double> kDoubles = {
    REALGetArrayValueDouble,
    [](double element, const EnclosingContainers *) -> id { return [NSNumber numberWithDouble:element]; }};
constexpr ElementType<bool> kBooleans = {
    REALGetArrayValueBoolean,
    [](bool element, const EnclosingContainers *) -> id { return [NSNumber numberWithBool:element]; }};
constexpr ElementType<REALobject> kDates = {
    REALGetArrayValueObject,
    [](REALobject element, const EnclosingContainers *) -> id { return NewNSDate(element); }};
constexpr ElementType<REALstring> kStrings = {
    REALGetArrayValueString,
    [](REALstring element, const EnclosingContainers *) -> id { return EmptyForNil(NewNSString(element)); }};
constexpr ElementType<REALobject> kObjects = {REALGetArrayValueObject, GetVariantAsNSObject};
constexpr ElementType<REALtext> kTexts = {REALGetArrayValueText, ConvertText};

} // namespace

id ConvertIntegerArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kIntegers, enclosing);
}

id ConvertInt64Array(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kInt64s, enclosing);
}

id ConvertSingleArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kSingles, enclosing);
}

id ConvertDoubleArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kDoubles, enclosing);
}

id ConvertBooleanArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kBooleans, enclosing);
}

id ConvertDateArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kDates, enclosing);
}

id ConvertStringArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kStrings, enclosing);
}

id ConvertObjectArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kObjects, enclosing);
}

id ConvertTextArray(REALobject array, const EnclosingContainers *enclosing)
{
    return ConvertArray(array, kTexts, enclosing);
}

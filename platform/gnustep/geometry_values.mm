// Makes NSValues of rectangles, sizes, points and ranges behave as on macOS.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

template <typename Geometry>
void Store(Geometry geometry, void *memory)
{
    std::memcpy(memory, &geometry, sizeof geometry);
}

/// One of GNUstep's concrete classes of NSValue.
struct GeometryType {
    const char *className;
    const char *macOSType;
    const char *gnustepType;
    void (*read)(NSValue *value, void *memory);
    Class concreteClass;
};

/// Values compare and copy by class. An archive contains the encoding, and keeps GNUstep's, which is the one
/// that GNUstep reads.
GeometryType gGeometryTypes[] = {
    {"GSRectValue", "{CGRect={CGPoint=dd}{CGSize=dd}}", @encode(NSRect),
     [](NSValue *value, void *memory) { Store([value rectValue], memory); }, Nil},
    {"GSSizeValue", "{CGSize=dd}", @encode(NSSize),
     [](NSValue *value, void *memory) { Store([value sizeValue], memory); }, Nil},
    {"GSPointValue", "{CGPoint=dd}", @encode(NSPoint),
     [](NSValue *value, void *memory) { Store([value pointValue], memory); }, Nil},
    {"GSRangeValue", "{_NSRange=QQ}", @encode(NSRange),
     [](NSValue *value, void *memory) { Store([value rangeValue], memory); }, Nil},
};

/// The row of a value of a listed class.
const GeometryType &TypeOf(NSValue *value)
{
    const auto isOfRow = [value](const GeometryType &row) {
        return [value isKindOfClass:row.concreteClass] != NO;
    };
    return *std::find_if(std::begin(gGeometryTypes), std::end(gGeometryTypes), isOfRow);
}

const char *ObjCType(NSValue *value, SEL)
{
    return TypeOf(value).macOSType;
}

/// Stands in for GNUstep's, which copies the first eight bytes only.
void GetValue(NSValue *value, SEL, void *memory)
{
    TypeOf(value).read(value, memory);
}

void EncodeWithCoder(NSValue *value, SEL, NSCoder *coder)
{
    const GeometryType &type = TypeOf(value);
    const unsigned typeSize = static_cast<unsigned>(std::strlen(type.gnustepType) + 1);
    [coder encodeValueOfObjCType:@encode(unsigned) at:&typeSize];
    [coder encodeArrayOfObjCType:@encode(signed char) count:typeSize at:type.gnustepType];
    NSRect largest;
    type.read(value, &largest);
    [coder encodeValueOfObjCType:type.gnustepType at:&largest];
}

Class (*gClassOfType)(Class, SEL, const char *);

/// The class of a value of an encoding. GNUstep knows macOS's encodings, too, but mistakes a size for a
/// point.
Class ClassOfType(Class valueClass, SEL selector, const char *type)
{
    for (const GeometryType &row : gGeometryTypes)
        if (type != nullptr && std::strcmp(type, row.macOSType) == 0)
            return row.concreteClass;
    return gClassOfType(valueClass, selector, type);
}

/// Sets a method's implementation and returns the one that it had.
template <typename Function>
Function Replace(Method method, Function implementation)
{
    return reinterpret_cast<Function>(
        method_setImplementation(method, reinterpret_cast<IMP>(implementation)));
}

} // namespace

@interface NSValue (CocoaportClassOfType)
+ (Class)valueClassWithObjCType:(const char *)type;
@end

@interface CocoaportGeometryValues : NSObject
@end

@implementation CocoaportGeometryValues

+ (void)load
{
    for (GeometryType &row : gGeometryTypes) {
        const Class concreteClass = objc_getClass(row.className);
        row.concreteClass = concreteClass;
        Replace(class_getInstanceMethod(concreteClass, @selector(objCType)), ObjCType);
        Replace(class_getInstanceMethod(concreteClass, @selector(getValue:)), GetValue);
        Replace(class_getInstanceMethod(concreteClass, @selector(encodeWithCoder:)), EncodeWithCoder);
    }
    const Method classOfType =
        class_getClassMethod(objc_getClass("NSValue"), @selector(valueClassWithObjCType:));
    gClassOfType = Replace(classOfType, ClassOfType);
}

@end

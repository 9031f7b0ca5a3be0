// Cocoa objects become host values, by hand.
#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <cstring>

#include "bench/floor_dictionary_methods.h"
#include "bench/floors.h"
#include "bench/host_functions.h"

namespace {

bool HasType(NSNumber *number, const char *type)
{
    return std::strcmp([number objCType], type) == 0;
}

/// Of a number of any of the types that come up in trees.
REALobject VariantOfNumber(NSNumber *number)
{
    if (number == (id)kCFBooleanFalse)
        return gHost.booleanToVariant(false);
    if (number == (id)kCFBooleanTrue)
        return gHost.booleanToVariant(true);
    const char *const type = [number objCType];
    if (std::strcmp(type, "i") == 0)
        return gHost.integerToVariant([number intValue]);
    if (std::strcmp(type, "q") == 0)
        return gHost.integerToVariant([number longValue]);
    return gHost.doubleToVariant([number doubleValue]);
}

} // namespace

REALstring FloorStringToHost(NSString *string)
{
    const auto text = (CFStringRef)string;
    const CFIndex length = CFStringGetLength(text);
    char onStack[601];
    char *buffer = onStack;
    CFIndex capacity = 600;
    if (length > 99) {
        capacity = length * 6;
        buffer = static_cast<char *>(std::malloc(static_cast<size_t>(capacity)));
    }
    REALstring result = nullptr;
    if (CFStringGetCString(text, buffer, capacity, kCFStringEncodingUTF8)) {
        result = gHost.buildString(buffer, static_cast<int32_t>(std::strlen(buffer)));
        gHost.setStringEncoding(result, kCFStringEncodingUTF8);
    }
    if (buffer != onStack)
        std::free(buffer);
    return result;
}

REALobject FloorVariantOfString(id string)
{
    const REALstring text = FloorStringToHost(string);
    const REALobject variant = gHost.stringToVariant(text);
    gHost.unlockString(text);
    return variant;
}

REALobject FloorVariantOfInt(id number)
{
    return HasType(number, "i") ? gHost.integerToVariant([number intValue]) : nullptr;
}

REALobject FloorVariantOfUnsignedLong(id number)
{
    if (!HasType(number, "Q"))
        return nullptr;
    return gHost.uint32ToVariant(static_cast<uint32_t>([number unsignedLongValue]));
}

REALobject FloorVariantOfLong(id number)
{
    return HasType(number, "q") ? gHost.integerToVariant([number longValue]) : nullptr;
}

REALobject FloorVariantOfFloat(id number)
{
    return HasType(number, "f") ? gHost.singleToVariant([number floatValue]) : nullptr;
}

REALobject FloorVariantOfDouble(id number)
{
    return HasType(number, "d") ? gHost.doubleToVariant([number doubleValue]) : nullptr;
}

REALobject FloorVariantOfTrue(id number)
{
    return number == (id)kCFBooleanTrue ? gHost.booleanToVariant(true) : nullptr;
}

REALobject FloorHostArray(NSArray *array, REALobject (*convert)(id element))
{
    using Insert = void (*)(REALarray array, int64_t index, REALobject value);
    constexpr int64_t kObjectElements = 4;
    const REALarray result = gHost.createArray(kObjectElements, -1);
    NSEnumerator *const elements = [array objectEnumerator];
    int64_t index = 0;
    while (const id element = [elements nextObject]) {
        const REALobject variant = convert(element);
        reinterpret_cast<Insert>(gHost.objectArrayInsertProc(result))(result, index++, variant);
        gHost.unlockObject(variant);
    }
    return AsInstance(result);
}

REALobject FloorHostDictionary(NSDictionary *dictionary, REALobject (*convertKey)(id key),
                               REALobject (*convertValue)(id value))
{
    const REALobject result = gHost.newInstance("Dictionary");
    NSArray *const keys = [dictionary allKeys];
    const NSUInteger count = [keys count];
    for (NSUInteger index = 0; index < count; ++index) {
        const id key = [keys objectAtIndex:index];
        const id value = [dictionary objectForKey:key];
        const REALobject keyVariant = convertKey(key);
        const REALobject valueVariant = convertValue(value);
        gFloorMethods.Use(result);
        gFloorMethods.setValue(result, keyVariant, valueVariant);
        gHost.unlockObject(keyVariant);
        gHost.unlockObject(valueVariant);
    }
    gFloorMethods.last = nullptr;
    return result;
}

REALobject FloorAnyToHost(id object)
{
    static const Class stringClass = [NSString class];
    static const Class numberClass = [NSNumber class];
    static const Class arrayClass = [NSArray class];
    if ([object isKindOfClass:stringClass])
        return FloorVariantOfString(object);
    if ([object isKindOfClass:numberClass])
        return VariantOfNumber(object);
    if ([object isKindOfClass:arrayClass])
        return FloorHostArray(object, FloorAnyToHost);
    return FloorHostDictionary(object, FloorAnyToHost, FloorAnyToHost);
}

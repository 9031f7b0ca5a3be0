// Host values become Cocoa objects, by hand.
#include "bench/floor_dictionary_methods.h"
#include "bench/floors.h"
#include "bench/host_functions.h"
#include "host/values/value.h"

namespace code = qzlhost::code;

namespace {

constexpr uint32_t kRawBytes = 0xFFFF;

/// The host's reader for the array, as a function for elements of this type.
template <typename Element>
auto ReaderFor(void *(*find)(REALarray array), REALarray array)
{
    return reinterpret_cast<Element (*)(REALarray, int64_t)>(find(array));
}

bool IsOfClass(REALobject object, const char *className)
{
    return gHost.objectIsA(object, gHost.objectType(className));
}

/// Asks about the kinds of object that are tried before Dictionaries.
bool IsNoBlockOrFolderItem(REALobject object)
{
    return !IsOfClass(object, "MemoryBlock") &&
           gHost.loadObjectMethod(object, "TrueItem(Index as integer) as Folderitem") == nullptr;
}

} // namespace

NSString *FloorStringToCocoa(REALstring string)
{
    if (gHost.getStringEncoding(string) == kRawBytes)
        return nil;
    return [(NSString *)gHost.getStringCFString(string, 0) autorelease];
}

id FloorLong(REALobject variant)
{
    if (gHost.varType(variant) != code::Int32)
        return nil;
    return [NSNumber numberWithLong:gHost.variantToInt64(variant)];
}

id FloorLongLong(REALobject variant)
{
    if (gHost.varType(variant) != code::Int64)
        return nil;
    return [NSNumber numberWithLongLong:gHost.variantToInt64(variant)];
}

id FloorSingle(REALobject variant)
{
    if (gHost.varType(variant) != code::Single)
        return nil;
    return [NSNumber numberWithFloat:gHost.variantToSingle(variant)];
}

id FloorDouble(REALobject variant)
{
    if (gHost.varType(variant) != code::Double)
        return nil;
    return [NSNumber numberWithDouble:gHost.variantToDouble(variant)];
}

id FloorBoolean(REALobject variant)
{
    if (gHost.varType(variant) != code::Boolean)
        return nil;
    return [NSNumber numberWithBool:static_cast<BOOL>(gHost.variantToInt64(variant))];
}

id FloorString(REALobject variant)
{
    if (gHost.varType(variant) != code::String)
        return nil;
    const REALstring string = gHost.variantToString(variant);
    NSString *const text = FloorStringToCocoa(string);
    gHost.unlockString(string);
    return text;
}

id FloorInt64Array(REALobject variant)
{
    if (gHost.varType(variant) != code::Array + code::Int64)
        return nil;
    const auto array = reinterpret_cast<REALarray>(variant);
    NSMutableArray *const result = [NSMutableArray array];
    const int64_t bound = gHost.uBound(array);
    for (int64_t index = 0; index <= bound && gHost.uBound(array) >= index; ++index) {
        const auto read = ReaderFor<int64_t>(gHost.int64ArrayGetProc, array);
        [result addObject:[NSNumber numberWithLongLong:read(array, index)]];
    }
    return result;
}

id FloorStringArray(REALobject variant)
{
    if (gHost.varType(variant) != code::Array + code::String)
        return nil;
    const auto array = reinterpret_cast<REALarray>(variant);
    NSMutableArray *const result = [NSMutableArray array];
    const int64_t bound = gHost.uBound(array);
    for (int64_t index = 0; index <= bound && gHost.uBound(array) >= index; ++index) {
        const REALstring element = ReaderFor<REALstring>(gHost.stringArrayGetProc, array)(array, index);
        [result addObject:FloorStringToCocoa(element)];
        gHost.unlockString(element);
    }
    return result;
}

id FloorObjectArray(REALobject variant, id (*convert)(REALobject element))
{
    if (gHost.varType(variant) != code::Array + code::Object)
        return nil;
    const auto array = reinterpret_cast<REALarray>(variant);
    NSMutableArray *const result = [NSMutableArray array];
    const int64_t bound = gHost.uBound(array);
    for (int64_t index = 0; index <= bound && gHost.uBound(array) >= index; ++index) {
        const REALobject element = ReaderFor<REALobject>(gHost.objectArrayGetProc, array)(array, index);
        [result addObject:convert(element)];
        gHost.unlockObject(element);
    }
    return result;
}

NSDictionary *FloorDictionary(REALobject dictionary, id (*convertKey)(REALobject key),
                              id (*convertValue)(REALobject value))
{
    int64_t count = 0;
    gHost.getInteger(dictionary, "Count", &count);
    NSMutableDictionary *const result =
        [NSMutableDictionary dictionaryWithCapacity:static_cast<NSUInteger>(count)];
    for (int64_t index = 0; index < count; ++index) {
        gFloorMethods.Use(dictionary);
        const REALobject key = gFloorMethods.key(dictionary, index);
        const REALobject value = gFloorMethods.value(dictionary, key);
        const id cocoaKey = convertKey(key);
        [result setObject:convertValue(value) forKey:cocoaKey];
        gHost.unlockObject(key);
        gHost.unlockObject(value);
    }
    gFloorMethods.last = nullptr;
    return result;
}

id FloorAnyToCocoa(REALobject variant)
{
    switch (gHost.varType(variant)) {
    case code::Int64:
        return [NSNumber numberWithLongLong:gHost.variantToInt64(variant)];
    case code::Double:
        return [NSNumber numberWithDouble:gHost.variantToDouble(variant)];
    case code::Boolean:
        return [NSNumber numberWithBool:static_cast<BOOL>(gHost.variantToInt64(variant))];
    case code::String: {
        const REALstring string = gHost.variantToString(variant);
        NSString *const text = FloorStringToCocoa(string);
        gHost.unlockString(string);
        return text;
    }
    case code::Object:
        if (!IsNoBlockOrFolderItem(variant) || !IsOfClass(variant, "Dictionary"))
            return nil;
        return FloorDictionary(variant, FloorAnyToCocoa, FloorAnyToCocoa);
    case code::Array + code::Object: {
        const auto array = reinterpret_cast<REALarray>(variant);
        NSMutableArray *const result = [NSMutableArray array];
        const int64_t bound = gHost.uBound(array);
        for (int64_t index = 0; index <= bound && gHost.uBound(array) >= index; ++index) {
            const REALobject element = ReaderFor<REALobject>(gHost.objectArrayGetProc, array)(array, index);
            [result addObject:FloorAnyToCocoa(element)];
            gHost.unlockObject(element);
        }
        return result;
    }
    default:
        return nil;
    }
}

bool FloorIsOtherObject(REALobject object)
{
    return gHost.varType(object) == code::Object && IsNoBlockOrFolderItem(object) &&
           !IsOfClass(object, "Dictionary");
}

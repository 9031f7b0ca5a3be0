// What the host does for the library. Results carry a reference, arguments are borrowed.
#include "check/host_functions.h"

#include <ApplicationServices/ApplicationServices.h>

#include <cstring>

#include "check/host.h"
#include "check/text.h"

namespace {

struct Function {
    const char *name;
    void *address;
};

/// The address of a function without captures.
template <typename Lambda>
void *Address(Lambda function)
{
    return reinterpret_cast<void *>(+function);
}

template <size_t Count>
void *Find(const Function (&functions)[Count], const char *name)
{
    for (const Function &function : functions) {
        if (std::strcmp(function.name, name) == 0)
            return function.address;
    }
    return nullptr;
}

/// Dictionaries and arrays hold NSNull in place of null.
id Stored(id value)
{
    return value == nil ? static_cast<id>([NSNull null]) : value;
}

id Fetched(id stored)
{
    return stored == [NSNull null] ? nil : stored;
}

id Property(Instance instance, const char *name)
{
    if (std::strcmp(name, "Count") == 0)
        return @([instance->value count]);
    if (std::strcmp(name, "Size") == 0)
        return @([instance->value length]);
    return [instance->value objectForKey:[NSString stringWithUTF8String:name]];
}

bool SetProperty(Instance instance, const char *name, id value)
{
    if (instance->value == nil)
        instance->value = [[NSMutableDictionary alloc] init];
    if (value != nil)
        [instance->value setObject:value forKey:[NSString stringWithUTF8String:name]];
    return true;
}

void Lock(Instance instance)
{
    [instance retain];
}

void Unlock(Instance instance)
{
    [instance release];
}

bool IsA(Instance instance, NSString *wanted)
{
    NSString *type = instance->type;
    while (type != nil && type != wanted)
        type = SuperOf(type);
    return type != nil;
}

HostString NewString(const char *bytes, int32_t length, uint32_t encoding)
{
    return
        [StringOfBytes([NSData dataWithBytes:bytes length:static_cast<NSUInteger>(length)], encoding) retain];
}

template <int64_t Code, typename Number>
Instance NewNumber(Number value)
{
    return [Variant(Code, @(value)) retain];
}

id Element(Instance array, int64_t index)
{
    return Fetched([array->value objectAtIndex:static_cast<NSUInteger>(index)]);
}

/// Makes a reader of elements a function that returns it for an array.
template <auto Reader>
void *GetProc(Instance)
{
    return reinterpret_cast<void *>(Reader);
}

int64_t IntegerElement(Instance array, int64_t index)
{
    return [Element(array, index) longLongValue];
}

bool BooleanElement(Instance array, int64_t index)
{
    return [Element(array, index) boolValue];
}

float SingleElement(Instance array, int64_t index)
{
    return [Element(array, index) floatValue];
}

double DoubleElement(Instance array, int64_t index)
{
    return [Element(array, index) doubleValue];
}

id ReferenceElement(Instance array, int64_t index)
{
    return [Element(array, index) retain];
}

void InsertElement(Instance array, int64_t index, Instance element)
{
    [array->value insertObject:Stored(element) atIndex:static_cast<NSUInteger>(index)];
}

Instance DictionaryKey(Instance dictionary, int64_t index)
{
    NSArray *const keys = [[dictionary->value allKeys] sortedArrayUsingSelector:@selector(compare:)];
    return [Variant(code::String, String([keys objectAtIndex:static_cast<NSUInteger>(index)])) retain];
}

void ConstructDate(Instance date, int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute,
                   int64_t second)
{
    const Instance made = Date(@[ @(year), @(month), @(day), @(hour), @(minute), @(second) ]);
    date->code = made->code;
    date->value = [made->value retain];
}

bool GetReference(NSString *path, FSRef *reference)
{
    return CFURLGetFSRef(reinterpret_cast<CFURLRef>([NSURL fileURLWithPath:path]), reference);
}

bool ReferenceOfFile(Instance item, FSRef *reference, HFSUniStr255 *name)
{
    if (name == nullptr)
        return GetReference(item->value, reference);
    NSString *const leaf = [item->value lastPathComponent];
    name->length = static_cast<UInt16>([leaf length]);
    [leaf getCharacters:name->unicode range:NSMakeRange(0, [leaf length])];
    return GetReference([item->value stringByDeletingLastPathComponent], reference);
}

Instance FileInFolder(const FSRef *parent, const HFSUniStr255 *name)
{
    UInt8 path[4096] = {};
    if (FSRefMakePath(parent, path, sizeof path) != noErr)
        return nullptr;
    NSString *const folder = [NSString stringWithUTF8String:reinterpret_cast<const char *>(path)];
    NSString *const leaf = [NSString stringWithCharacters:name->unicode length:name->length];
    return [Value(@"FolderItem", [folder stringByAppendingPathComponent:leaf]) retain];
}

void *GlobalMethod(void *, const char *declaration)
{
    static const Function kMethods[] = {
        {"LenB( s as string ) as integer", Address([](HostString s) { return [s->value length] - 1; })},
        {"VarType(value As Variant) As Integer", Address([](Instance variant) { return variant->code; })},
        {"GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem",
         Address([](HostString path, int64_t) { return [Value(@"FolderItem", TextOfString(path)) retain]; })},
    };
    return Find(kMethods, declaration);
}

void *ObjectMethod(Instance instance, const char *declaration)
{
    static const Function kMethods[] = {
        {"Value(key As Variant, Assigns _value As Variant)",
         Address([](Instance dictionary, Instance key, Instance value) {
             [dictionary->value setObject:Stored(value) forKey:TextOfString(key->value)];
         })},
        {"Value(key As Variant) As Variant", Address([](Instance dictionary, Instance key) {
             return [Fetched([dictionary->value objectForKey:TextOfString(key->value)]) retain];
         })},
        {"Key(index As Integer) As Variant", Address(DictionaryKey)},
        {"Operator_Convert() As Ptr", Address([](Instance block) { return [block->value mutableBytes]; })},
        {"Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, "
         "minute as Integer = 0, second as Integer = 0",
         Address(ConstructDate)},
    };
    // Every object that has this method counts as a FolderItem.
    if (std::strcmp(declaration, "TrueItem(Index as integer) as Folderitem") == 0)
        return [instance->type isEqual:@"FolderItem"] ? Address(Stored) : nullptr;
    return Find(kMethods, declaration);
}

const Function kFunctions[] = {
    {"REALGetRBVersion", Address([] { return 2024.01; })},
    {"RegisterPluginVersion", Address([](int32_t) {})},
    {"PluginRegisterClass", Address(RegisterClass)},
    {"PluginNewInstance",
     Address([](const char *name) { return [NewInstance([NSString stringWithUTF8String:name]) retain]; })},
    {"REALLockObject", Address(Lock)},
    {"REALUnlockObject", Address(Unlock)},
    {"RuntimeObjectIsa", Address(IsA)},
    {"pluginObjectType", Address(ClassNamed)},
    {"GetEventInstance", Address([](Instance instance, uint64_t key) {
         return key == kEventKey ? instance->gotNotification : nullptr;
     })},
    {"RuntimeRaiseException", Address(RecordException)},
    {"REALLoadGlobalMethod", Address(GlobalMethod)},
    {"REALLoadObjectMethod", Address(ObjectMethod)},
    {"REALGetPropValueInteger", Address([](Instance instance, const char *name, int64_t *result) {
         *result = [Property(instance, name) longLongValue];
         return Property(instance, name) != nil;
     })},
    // "DateValue": a date that is used as a variant is the date itself.
    {"REALGetPropValueObject", Address([](Instance instance, const char *, Instance *result) {
         *result = [instance retain];
         return true;
     })},
    {"REALSetPropValueInteger", Address([](Instance instance, const char *name, int64_t value) {
         return SetProperty(instance, name, @(value));
     })},
    {"REALSetPropValueString", Address([](Instance instance, const char *name, HostString value) {
         return SetProperty(instance, name, value);
     })},
    {"StringToVariant", Address([](HostString string) { return [Variant(code::String, string) retain]; })},
    {"IntegerToVariant", Address(NewNumber<code::Int64, int64_t>)},
    {"UInt32ToVariant", Address(NewNumber<code::Int64, uint32_t>)},
    {"DoubleToVariant", Address(NewNumber<code::Double, double>)},
    {"SingleToVariant", Address(NewNumber<code::Single, float>)},
    {"BooleanToVariant", Address(NewNumber<code::Boolean, bool>)},
    {"VariantToString", Address([](Instance variant) { return [variant->value retain]; })},
    {"VariantToInt64", Address([](Instance variant) { return [variant->value longLongValue]; })},
    {"VariantToDouble", Address([](Instance variant) { return [variant->value doubleValue]; })},
    {"VariantToSingle", Address([](Instance variant) { return [variant->value floatValue]; })},
    {"REALLockString", Address(Lock)},
    {"REALUnlockString", Address(Unlock)},
    {"REALBuildString",
     Address([](const char *bytes, int32_t length) { return NewString(bytes, length, kUnknownEncoding); })},
    {"REALBuildStringWithEncoding", Address(NewString)},
    {"REALGetStringEncoding", Address([](HostString string) { return string->encoding; })},
    {"REALSetStringEncoding", Address([](HostString s, uint32_t encoding) { s->encoding = encoding; })},
    // To UTF-8; the library asks for nothing else.
    {"REALConvertString",
     Address([](HostString string, uint32_t) { return [String(TextOfString(string)) retain]; })},
    {"StringGetCString", Address([](HostString string) { return [string->value bytes]; })},
    {"RuntimeArrayCreateSingleDimBoundedArray", Address([](int64_t, int64_t) {
         return [Variant(code::Array + code::Object, [NSMutableArray array]) retain];
     })},
    {"RuntimeUBound", Address([](Instance array) { return static_cast<int64_t>([array->value count]) - 1; })},
    {"PluginObjectArrayInsertProc", Address(GetProc<InsertElement>)},
    {"PluginIntegerArrayGetProc", Address(GetProc<IntegerElement>)},
    {"PluginInt64ArrayGetProc", Address(GetProc<IntegerElement>)},
    {"PluginBooleanArrayGetProc", Address(GetProc<BooleanElement>)},
    {"PluginSingleArrayGetProc", Address(GetProc<SingleElement>)},
    {"PluginDoubleArrayGetProc", Address(GetProc<DoubleElement>)},
    {"PluginStringArrayGetProc", Address(GetProc<ReferenceElement>)},
    {"PluginObjectArrayGetProc", Address(GetProc<ReferenceElement>)},
    {"newMemoryBlock", Address([](int32_t size) {
         return [Value(@"MemoryBlock", [NSMutableData dataWithLength:static_cast<NSUInteger>(size)]) retain];
     })},
    {"REALFSRefFromFolderItem", Address(ReferenceOfFile)},
    {"REALFolderItemFromParentFSRef", Address(FileInFolder)},
};

} // namespace

void *FindHostFunction(const char *name)
{
    return Find(kFunctions, name);
}

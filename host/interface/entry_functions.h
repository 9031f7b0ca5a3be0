// The host functions behind the entry points, by subject, with the interface's prototypes and ownership.
#pragma once

#include "host/interface/arguments.h"
#include "host/interface/cocoa_values.h"

namespace qzlhost {

struct ArrayPayload;
struct MemoryBlock;
struct FolderItem;
/// A class record as the library gives it.
struct RecordBytes;

/// As a library sees the bytes of a string in an encoding.
struct StringData {
    void *data;
    int64_t length;
    uint32_t encoding;
};

// Registration
double Version();
void RegisterVersion(int32_t version);
void RegisterClass(NotNull<RecordBytes> record);

// Objects
Instance *PluginNewInstance(NotNull<const char> name);
void LockObject(Instance *object);
void UnlockObject(Instance *object);
bool ObjectIsA(Instance *object, const ClassReference *reference);
const ClassReference *ObjectType(NotNull<const char> name);
void *EventInstance(NotNull<Instance> object, void *key);
void RaiseException(NotNull<Instance> exception);
Instance *CallWithExceptionHandler(NotNull<void(void *)> function, void *argument);
void *LoadGlobalMethod(void *module, NotNull<const char> declaration);
void *LoadObjectMethod(Instance *object, NotNull<const char> declaration);

// Properties
bool GetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, NotNull<int64_t> out);
bool GetPropertyDouble(NotNull<Instance> object, NotNull<const char> name, NotNull<double> out);
bool GetPropertySingle(NotNull<Instance> object, NotNull<const char> name, NotNull<float> out);
bool GetPropertyString(NotNull<Instance> object, NotNull<const char> name, NotNull<String *> out);
bool GetPropertyObject(NotNull<Instance> object, NotNull<const char> name, NotNull<Instance *> out);
bool SetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, int64_t value);
bool SetPropertyString(NotNull<Instance> object, NotNull<const char> name, String *value);

// Variants
Instance *StringToVariant(String *string);
Instance *IntegerToVariant(int64_t integer);
Instance *UInt32ToVariant(uint32_t integer);
Instance *DoubleToVariant(double number);
Instance *SingleToVariant(float number);
Instance *BooleanToVariant(bool boolean);
Instance *TextToVariant(Text *text);
String *VariantToString(Instance *variant);
int64_t VariantToInt64(Instance *variant);
double VariantToDouble(Instance *variant);
float VariantToSingle(Instance *variant);

// Strings and texts
void LockString(String *string);
void UnlockString(String *string);
String *BuildString(const char *bytes, int32_t length);
String *BuildStringWithEncoding(const char *bytes, int32_t length, uint32_t encoding);
uint32_t GetStringEncoding(String *string);
void SetStringEncoding(String *string, uint32_t encoding);
String *ConvertString(String *string, uint32_t encoding);
const char *StringGetCString(String *string);
CFStringRef GetStringCFString(String *string, int64_t unused) __attribute__((cf_returns_retained));
bool GetStringData(String *string, uint32_t encoding, NotNull<StringData> out);
void DisposeStringData(NotNull<StringData> data);
void LockText(Text *text);
void UnlockText(Text *text);
CFStringRef CopyTextCFString(Text *text) __attribute__((cf_returns_retained));

// Arrays
Instance *CreateArray(int64_t elementType, int64_t upperBound);
int64_t UBound(Of<ArrayPayload> array);
void *ObjectArrayInsertProc(Of<ArrayPayload> array);
void *IntegerArrayGetProc(Of<ArrayPayload> array);
void *Int64ArrayGetProc(Of<ArrayPayload> array);
void *BooleanArrayGetProc(Of<ArrayPayload> array);
void *SingleArrayGetProc(Of<ArrayPayload> array);
void *DoubleArrayGetProc(Of<ArrayPayload> array);
void *StringArrayGetProc(Of<ArrayPayload> array);
void *TextArrayGetProc(Of<ArrayPayload> array);
void *ObjectArrayGetProc(Of<ArrayPayload> array);

// Memory blocks
Instance *NewMemoryBlock(int32_t size);
void *MemoryBlockPointer(Of<MemoryBlock> block);
int64_t MemoryBlockSize(Of<MemoryBlock> block);

// Folder items
bool FSRefFromFolderItem(Of<FolderItem> item, NotNull<FSRef> out, HFSUniStr255 *name);
Instance *FolderItemFromParentFSRef(NotNull<const FSRef> parent, NotNull<const HFSUniStr255> name);

} // namespace qzlhost

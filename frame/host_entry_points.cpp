// The host's functions, found by name on first use.
#include "frame/host_entry_points.h"

#include <type_traits>

#include "frame/kept_look_ups.h"
#include "frame/loaded_host.h"

namespace {

/// The host function in `slot`, looked up by `name` until it is found; null while the host lacks it.
template <typename Function>
Function *FindHostFunction(Function *&slot, const char *name)
{
    return KeepFound(slot, [name] { return gResolver(name); });
}

/// Calls a function and returns its result; without a function, returns 0, null or false. For a procedure,
/// returns whether there is one.
template <typename Result, typename... Parameters, typename... Arguments>
auto CallIfFound(Result (*function)(Parameters...), Arguments... arguments)
{
    if constexpr (std::is_void_v<Result>) {
        if (function != nullptr)
            function(arguments...);
        return function != nullptr;
    } else {
        return function != nullptr ? function(arguments...) : Result();
    }
}

template <typename Function, typename... Arguments>
__attribute__((noinline)) auto FindAndCallHost(Function *&slot, const char *name, Arguments... arguments)
{
    return CallIfFound(FindHostFunction(slot, name), arguments...);
}

/// Calls a host function, as `CallIfFound` does. The look-up is out of line, so that calling a function that
/// was found before costs a jump.
template <typename Function, typename... Arguments>
auto CallHost(Function *&slot, const char *name, Arguments... arguments)
{
    if (const auto function = Kept(slot))
        return CallIfFound(function, arguments...);
    return FindAndCallHost(slot, name, arguments...);
}

/// The value that the host function returns for a variant, or, if the host lacks the function, the property
/// of the variant.
template <typename Result>
Result CallHostOr(Result (*&slot)(REALobject), const char *name,
                  bool (*getProperty)(REALobject, const char *, Result *), const char *property,
                  REALobject variant)
{
    if (const auto function = FindHostFunction(slot, name))
        return function(variant);
    Result value = Result();
    getProperty(variant, property, &value);
    return value;
}

/// The element as the host's procedure for the array reads it; 0 or null without a procedure.
template <typename Element>
Element ReadElement(void *(*&slot)(REALarray), const char *name, REALarray array, int64_t index)
{
    using Read = Element (*)(REALarray, int64_t);
    const auto read = reinterpret_cast<Read>(CallHost(slot, name, array));
    return read != nullptr ? read(array, index) : Element();
}

} // namespace

// Classes and instances

void REALRegisterClass(REALclassDefinition *record)
{
    static void (*pRegisterClass)(REALclassDefinition *);
    CallHost(pRegisterClass, "PluginRegisterClass", record);
}

REALobject REALnewInstance(const char *className)
{
    static REALobject (*pNewInstance)(const char *);
    return CallHost(pNewInstance, "PluginNewInstance", className);
}

bool REALLockObject(REALobject object)
{
    static void (*pLockObject)(REALobject);
    return CallHost(pLockObject, "REALLockObject", object);
}

void REALUnlockObject(REALobject object)
{
    static void (*pUnlockObject)(REALobject);
    CallHost(pUnlockObject, "REALUnlockObject", object);
}

bool REALObjectIsA(REALobject object, REALclassRef classRef)
{
    static bool (*pObjectIsA)(REALobject, REALclassRef);
    return CallHost(pObjectIsA, "RuntimeObjectIsa", object, classRef);
}

REALclassRef REALGetClassRef(const char *className)
{
    static REALclassRef (*pObjectType)(const char *);
    return CallHost(pObjectType, "pluginObjectType", className);
}

void *REALGetEventInstance(REALobject instance, void *key)
{
    static void *(*pGetEventInstance)(REALobject, void *);
    return CallHost(pGetEventInstance, "GetEventInstance", instance, key);
}

// Exceptions

void REALRaiseException(REALobject exception)
{
    static void (*pRaiseException)(REALobject);
    CallHost(pRaiseException, "RuntimeRaiseException", exception);
}

REALobject REALCallFunctionWithExceptionHandler(void (*function)(void *), void *argument)
{
    static REALobject (*pCallFunctionWithExceptionHandler)(void (*)(void *), void *);
    return CallHost(pCallFunctionWithExceptionHandler, "PluginCallFunctionWithExceptionHandler", function,
                    argument);
}

// Methods by declaration

void *REALLoadFrameworkMethod(void *module, const char *declaration)
{
    static void *(*pLoadGlobalMethod)(void *, const char *);
    return CallHost(pLoadGlobalMethod, "REALLoadGlobalMethod", module, declaration);
}

void *REALLoadObjectMethod(REALobject object, const char *declaration)
{
    static void *(*pLoadObjectMethod)(REALobject, const char *);
    return CallHost(pLoadObjectMethod, "REALLoadObjectMethod", object, declaration);
}

// Properties by name

bool REALGetPropValueInteger(REALobject object, const char *name, int64_t *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, int64_t *);
    return CallHost(pGetPropValue, "REALGetPropValueInteger", object, name, value);
}

bool REALGetPropValueInt64(REALobject object, const char *name, int64_t *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, int64_t *);
    return CallHost(pGetPropValue, "REALGetPropValueInt64", object, name, value);
}

bool REALGetPropValueDouble(REALobject object, const char *name, double *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, double *);
    return CallHost(pGetPropValue, "REALGetPropValueDouble", object, name, value);
}

bool REALGetPropValueSingle(REALobject object, const char *name, float *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, float *);
    return CallHost(pGetPropValue, "REALGetPropValueSingle", object, name, value);
}

bool REALGetPropValueString(REALobject object, const char *name, REALstring *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, REALstring *);
    return CallHost(pGetPropValue, "REALGetPropValueString", object, name, value);
}

bool REALGetPropValueObject(REALobject object, const char *name, REALobject *value)
{
    static bool (*pGetPropValue)(REALobject, const char *, REALobject *);
    return CallHost(pGetPropValue, "REALGetPropValueObject", object, name, value);
}

bool REALSetPropValueInteger(REALobject object, const char *name, int64_t value)
{
    static bool (*pSetPropValue)(REALobject, const char *, int64_t);
    return CallHost(pSetPropValue, "REALSetPropValueInteger", object, name, value);
}

bool REALSetPropValueString(REALobject object, const char *name, REALstring value)
{
    static bool (*pSetPropValue)(REALobject, const char *, REALstring);
    return CallHost(pSetPropValue, "REALSetPropValueString", object, name, value);
}

// Variants

REALobject REALNewVariantString(REALstring value)
{
    static REALobject (*pStringToVariant)(REALstring);
    return CallHost(pStringToVariant, "StringToVariant", value);
}

REALobject REALNewVariantInteger(int64_t value)
{
    static REALobject (*pIntegerToVariant)(int64_t);
    return CallHost(pIntegerToVariant, "IntegerToVariant", value);
}

REALobject REALNewVariantUInt32(uint32_t value)
{
    static REALobject (*pUInt32ToVariant)(uint32_t);
    return CallHost(pUInt32ToVariant, "UInt32ToVariant", value);
}

REALobject REALNewVariantDouble(double value)
{
    static REALobject (*pDoubleToVariant)(double);
    return CallHost(pDoubleToVariant, "DoubleToVariant", value);
}

REALobject REALNewVariantSingle(float value)
{
    static REALobject (*pSingleToVariant)(float);
    return CallHost(pSingleToVariant, "SingleToVariant", value);
}

REALobject REALNewVariantBoolean(bool value)
{
    static REALobject (*pBooleanToVariant)(bool);
    return CallHost(pBooleanToVariant, "BooleanToVariant", value);
}

REALobject REALNewVariantText(REALtext value)
{
    static REALobject (*pNewVariantText)(REALtext);
    return CallHost(pNewVariantText, "PluginNewVariantText", value);
}

REALstring GetVariantString(REALobject variant)
{
    static REALstring (*pVariantToString)(REALobject);
    return CallHostOr(pVariantToString, "VariantToString", REALGetPropValueString, "StringValue", variant);
}

int64_t GetVariantInt64(REALobject variant)
{
    static int64_t (*pVariantToInt64)(REALobject);
    return CallHostOr(pVariantToInt64, "VariantToInt64", REALGetPropValueInt64, "LongValue", variant);
}

double GetVariantDouble(REALobject variant)
{
    static double (*pVariantToDouble)(REALobject);
    return CallHostOr(pVariantToDouble, "VariantToDouble", REALGetPropValueDouble, "DoubleValue", variant);
}

float GetVariantSingle(REALobject variant)
{
    static float (*pVariantToSingle)(REALobject);
    return CallHostOr(pVariantToSingle, "VariantToSingle", REALGetPropValueSingle, "SingleValue", variant);
}

// Strings and texts

bool REALLockString(REALstring string)
{
    static void (*pLockString)(REALstring);
    return CallHost(pLockString, "REALLockString", string);
}

void REALUnlockString(REALstring string)
{
    static void (*pUnlockString)(REALstring);
    CallHost(pUnlockString, "REALUnlockString", string);
}

REALstring originalREALBuildString(const char *bytes, int32_t length)
{
    static REALstring (*pBuildString)(const char *, int32_t);
    return CallHost(pBuildString, "REALBuildString", bytes, length);
}

REALstring REALBuildStringWithEncoding(const char *bytes, int32_t length, uint32_t encoding)
{
    static REALstring (*pBuildStringWithEncoding)(const char *, int32_t, uint32_t);
    return CallHost(pBuildStringWithEncoding, "REALBuildStringWithEncoding", bytes, length, encoding);
}

uint32_t REALGetStringEncoding(REALstring string)
{
    static uint32_t (*pGetStringEncoding)(REALstring);
    return CallHost(pGetStringEncoding, "REALGetStringEncoding", string);
}

void REALSetStringEncoding(REALstring string, uint32_t encoding)
{
    static void (*pSetStringEncoding)(REALstring, uint32_t);
    CallHost(pSetStringEncoding, "REALSetStringEncoding", string, encoding);
}

REALstring REALConvertString(REALstring string, uint32_t encoding)
{
    static REALstring (*pConvertString)(REALstring, uint32_t);
    return CallHost(pConvertString, "REALConvertString", string, encoding);
}

const char *REALGetStringContents(REALstring string)
{
    static const char *(*pStringGetCString)(REALstring);
    return CallHost(pStringGetCString, "StringGetCString", string);
}

CFStringRef REALGetStringCFString(REALstring string, int64_t option)
{
    static CFStringRef (*pGetStringCFString)(REALstring, int64_t);
    return CallHost(pGetStringCFString, "REALGetStringCFString", string, option);
}

CFStringRef REALCopyStringCFString(REALstring string, int64_t option)
{
    static CFStringRef (*pGetStringCFString)(REALstring, int64_t);
    return CallHost(pGetStringCFString, "REALGetStringCFString", string, option);
}

bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData *data)
{
    static bool (*pGetStringData)(REALstring, uint32_t, REALstringData *);
    return CallHost(pGetStringData, "PluginGetStringData", string, encoding, data);
}

void REALDisposeStringData(REALstringData *data)
{
    static void (*pDisposeStringData)(REALstringData *);
    CallHost(pDisposeStringData, "PluginDisposeStringData", data);
}

bool REALLockText(REALtext text)
{
    static void (*pLockText)(REALtext);
    return CallHost(pLockText, "PluginLockText", text);
}

void REALUnlockText(REALtext text)
{
    static void (*pUnlockText)(REALtext);
    CallHost(pUnlockText, "PluginUnlockText", text);
}

CFStringRef REALCopyTextCFString(REALtext text)
{
    static CFStringRef (*pCopyTextCFString)(REALtext);
    return CallHost(pCopyTextCFString, "PluginCopyTextCFString", text);
}

// Arrays

REALarray REALCreateArray(int64_t elementType, int64_t upperBound)
{
    static REALarray (*pCreateArray)(int64_t, int64_t);
    return CallHost(pCreateArray, "RuntimeArrayCreateSingleDimBoundedArray", elementType, upperBound);
}

int64_t REALGetArrayUBound(REALarray array)
{
    static int64_t (*pUBound)(REALarray);
    return CallHost(pUBound, "RuntimeUBound", array);
}

bool REALInsertArrayValueObject(REALarray array, int64_t index, REALobject value)
{
    static void *(*pObjectArrayInsertProc)(REALarray);
    const auto insert = reinterpret_cast<void (*)(REALarray, int64_t, REALobject)>(
        CallHost(pObjectArrayInsertProc, "PluginObjectArrayInsertProc", array));
    if (insert == nullptr)
        return false;
    insert(array, index, value);
    return true;
}

int64_t REALGetArrayValueInteger(REALarray array, int64_t index)
{
    static void *(*pIntegerArrayGetProc)(REALarray);
    return ReadElement<int64_t>(pIntegerArrayGetProc, "PluginIntegerArrayGetProc", array, index);
}

int64_t REALGetArrayValueInt64(REALarray array, int64_t index)
{
    static void *(*pInt64ArrayGetProc)(REALarray);
    return ReadElement<int64_t>(pInt64ArrayGetProc, "PluginInt64ArrayGetProc", array, index);
}

bool REALGetArrayValueBoolean(REALarray array, int64_t index)
{
    static void *(*pBooleanArrayGetProc)(REALarray);
    return 0 != ReadElement<uint8_t>(pBooleanArrayGetProc, "PluginBooleanArrayGetProc", array, index);
}

float REALGetArrayValueSingle(REALarray array, int64_t index)
{
    static void *(*pSingleArrayGetProc)(REALarray);
    return ReadElement<float>(pSingleArrayGetProc, "PluginSingleArrayGetProc", array, index);
}

double REALGetArrayValueDouble(REALarray array, int64_t index)
{
    static void *(*pDoubleArrayGetProc)(REALarray);
    return ReadElement<double>(pDoubleArrayGetProc, "PluginDoubleArrayGetProc", array, index);
}

REALstring REALGetArrayValueString(REALarray array, int64_t index)
{
    static void *(*pStringArrayGetProc)(REALarray);
    return ReadElement<REALstring>(pStringArrayGetProc, "PluginStringArrayGetProc", array, index);
}

REALtext REALGetArrayValueText(REALarray array, int64_t index)
{
    static void *(*pTextArrayGetProc)(REALarray);
    return ReadElement<REALtext>(pTextArrayGetProc, "PluginTextArrayGetProc", array, index);
}

REALobject REALGetArrayValueObject(REALarray array, int64_t index)
{
    static void *(*pObjectArrayGetProc)(REALarray);
    return ReadElement<REALobject>(pObjectArrayGetProc, "PluginObjectArrayGetProc", array, index);
}

// Memory blocks

REALmemoryBlock REALNewMemoryBlockOriginal(int32_t size)
{
    static REALmemoryBlock (*pNewMemoryBlock)(int32_t);
    return CallHost(pNewMemoryBlock, "newMemoryBlock", size);
}

void *REALMemoryBlockGetPtr(REALmemoryBlock block)
{
    static void *(*pMemoryBlockGetPtr)(REALmemoryBlock);
    return CallHost(pMemoryBlockGetPtr, "memoryBlockGetPtr", block);
}

int64_t REALMemoryBlockGetSize(REALmemoryBlock block)
{
    static int64_t (*pMemoryBlockGetSize)(REALmemoryBlock);
    return CallHost(pMemoryBlockGetSize, "memoryBlockGetSize", block);
}

// Folder items

bool REALFSRefFromFolderItem(REALobject item, FSRef *ref, HFSUniStr255 *nameOrNull)
{
    static bool (*pFSRefFromFolderItem)(REALobject, FSRef *, HFSUniStr255 *);
    return CallHost(pFSRefFromFolderItem, "REALFSRefFromFolderItem", item, ref, nameOrNull);
}

REALobject REALFolderItemFromParentFSRef(const FSRef *parent, const HFSUniStr255 *name)
{
    static REALobject (*pFolderItemFromParentFSRef)(const FSRef *, const HFSUniStr255 *);
    return CallHost(pFolderItemFromParentFSRef, "REALFolderItemFromParentFSRef", parent, name);
}

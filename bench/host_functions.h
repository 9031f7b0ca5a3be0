// The host's functions as code written by hand calls them: through pointers that are found once.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

#include <cstdint>

#include "frame/class_records.h"
#include "frame/host_types.h"

struct HostFunctions {
    void (*registerClass)(REALclassDefinition *record);
    REALobject (*newInstance)(const char *className);
    void (*lockObject)(REALobject object);
    void (*unlockObject)(REALobject object);
    bool (*objectIsA)(REALobject object, REALclassRef classRef);
    REALclassRef (*objectType)(const char *className);
    void *(*getEventInstance)(REALobject instance, void *key);
    void *(*loadObjectMethod)(REALobject object, const char *declaration);

    bool (*getInteger)(REALobject object, const char *name, int64_t *value);
    bool (*getObject)(REALobject object, const char *name, REALobject *value);

    REALobject (*stringToVariant)(REALstring value);
    REALobject (*integerToVariant)(int64_t value);
    REALobject (*uint32ToVariant)(uint32_t value);
    REALobject (*doubleToVariant)(double value);
    REALobject (*singleToVariant)(float value);
    REALobject (*booleanToVariant)(bool value);
    REALstring (*variantToString)(REALobject variant);
    int64_t (*variantToInt64)(REALobject variant);
    double (*variantToDouble)(REALobject variant);
    float (*variantToSingle)(REALobject variant);

    void (*unlockString)(REALstring string);
    REALstring (*buildString)(const char *bytes, int32_t length);
    uint32_t (*getStringEncoding)(REALstring string);
    void (*setStringEncoding)(REALstring string, uint32_t encoding);
    CFStringRef (*getStringCFString)(REALstring string, int64_t option);

    REALarray (*createArray)(int64_t elementType, int64_t upperBound);
    int64_t (*uBound)(REALarray array);
    void *(*objectArrayInsertProc)(REALarray array);
    void *(*int64ArrayGetProc)(REALarray array);
    void *(*stringArrayGetProc)(REALarray array);
    void *(*objectArrayGetProc)(REALarray array);

    REALmemoryBlock (*newMemoryBlock)(int32_t size);

    /// The host's global method "VarType".
    int64_t (*varType)(REALobject variant);
    /// A memory block's method "Operator_Convert".
    void *(*memoryBlockPointer)(REALmemoryBlock block);
};

/// Where an instance keeps its Cocoa object.
inline id &FloorHandle(REALobject instance)
{
    constexpr size_t kHeaderSize = 48;
    return *reinterpret_cast<id *>(reinterpret_cast<char *>(instance) + kHeaderSize);
}

extern HostFunctions gHost;

/// Finds all functions of gHost. Throws std::runtime_error if one is missing.
void FindHostFunctions(void *(*resolver)(const char *name));

// The host's values as the library sees them: opaque handles, reached only through the host's functions.
#pragma once

#include <cstdint>

/// An instance of a host class; also a variant.
struct REALobjectStruct;
using REALobject = REALobjectStruct *;

/// A host string: bytes with an encoding tag. Null is the host's empty string.
struct REALstringStruct;
using REALstring = REALstringStruct *;

/// A host Dictionary. It is an instance, too.
struct _REALdictionary;
using REALdictionary = _REALdictionary *;

/// A host MemoryBlock. It is an instance, too.
struct REALmemoryBlockStruct;
using REALmemoryBlock = REALmemoryBlockStruct *;

/// A host text value.
struct REALtextStruct;
using REALtext = REALtextStruct *;

/// A host array. It is an instance, too.
struct REALarrayStruct;
using REALarray = REALarrayStruct *;

/// The host's reference for a class.
struct REALclassStruct;
using REALclassRef = REALclassStruct *;

/// The text of a host string in a requested encoding.
struct REALstringData {
    void *data;
    int64_t length;
    uint32_t encoding;
};

/// A handle of a narrower kind as an instance.
template <typename Handle>
REALobject AsInstance(Handle handle)
{
    return reinterpret_cast<REALobject>(handle);
}

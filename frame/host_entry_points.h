// The host's functions, one wrapper each. A wrapper finds its function by name on first use and keeps it.
// While the host lacks the function, the wrapper does nothing and returns 0, null or false.
//
// Instances, strings, texts and Core Foundation strings that a wrapper returns, or writes through a pointer,
// carry one reference that the caller gives back. Arguments are borrowed. Called on the host's thread.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>

#include "frame/class_records.h"
#include "frame/host_types.h"

// Classes and instances

void REALRegisterClass(REALclassDefinition *record);
/// Null for an unknown class. No "Constructor" method runs.
REALobject REALnewInstance(const char *className);
/// Returns whether the host has the function, as do `REALLockString` and `REALLockText`.
bool REALLockObject(REALobject object);
void REALUnlockObject(REALobject object);
bool REALObjectIsA(REALobject object, REALclassRef classRef);
/// Null for an unknown class.
REALclassRef REALGetClassRef(const char *className);
/// The handler `void (*)(REALobject instance, arguments...)`, borrowed; null if the program has none.
void *REALGetEventInstance(REALobject instance, void *key);

// Exceptions

/// Records the exception, taking a reference of its own; returns normally.
void REALRaiseException(REALobject exception);
/// Null, or an object that the caller gives back.
REALobject REALCallFunctionWithExceptionHandler(void (*function)(void *), void *argument);

// Methods by declaration

/// A global method; null if the host lacks it.
void *REALLoadFrameworkMethod(void *module, const char *declaration);
/// A method of the instance, which is its first argument; null if the instance lacks it.
void *REALLoadObjectMethod(REALobject object, const char *declaration);

// Properties by name. If the object has no such property of the type, a wrapper returns false and writes
// nothing.

bool REALGetPropValueInteger(REALobject object, const char *name, int64_t *value);
bool REALGetPropValueInt64(REALobject object, const char *name, int64_t *value);
bool REALGetPropValueDouble(REALobject object, const char *name, double *value);
bool REALGetPropValueSingle(REALobject object, const char *name, float *value);
bool REALGetPropValueString(REALobject object, const char *name, REALstring *value);
bool REALGetPropValueObject(REALobject object, const char *name, REALobject *value);
bool REALSetPropValueInteger(REALobject object, const char *name, int64_t value);
bool REALSetPropValueString(REALobject object, const char *name, REALstring value);

// Variants

REALobject REALNewVariantString(REALstring value);
REALobject REALNewVariantInteger(int64_t value);
REALobject REALNewVariantUInt32(uint32_t value);
REALobject REALNewVariantDouble(double value);
REALobject REALNewVariantSingle(float value);
REALobject REALNewVariantBoolean(bool value);
REALobject REALNewVariantText(REALtext value);
/// A variant's value; on hosts that lack the function, the variant's property, such as "LongValue".
REALstring GetVariantString(REALobject variant);
int64_t GetVariantInt64(REALobject variant);
double GetVariantDouble(REALobject variant);
float GetVariantSingle(REALobject variant);

// Strings and texts

bool REALLockString(REALstring string);
void REALUnlockString(REALstring string);
/// The string has no known encoding until it is given one.
REALstring originalREALBuildString(const char *bytes, int32_t length);
REALstring REALBuildStringWithEncoding(const char *bytes, int32_t length, uint32_t encoding);
uint32_t REALGetStringEncoding(REALstring string);
/// Changes the tag only.
void REALSetStringEncoding(REALstring string, uint32_t encoding);
REALstring REALConvertString(REALstring string, uint32_t encoding);
/// The string's bytes, borrowed from it.
const char *REALGetStringContents(REALstring string);
CFStringRef REALGetStringCFString(REALstring string, int64_t option) __attribute__((cf_returns_retained));
/// The same host function, looked up separately.
CFStringRef REALCopyStringCFString(REALstring string, int64_t option) __attribute__((cf_returns_retained));
bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData *data);
void REALDisposeStringData(REALstringData *data);
bool REALLockText(REALtext text);
void REALUnlockText(REALtext text);
CFStringRef REALCopyTextCFString(REALtext text) __attribute__((cf_returns_retained));

// Arrays. The host provides, for an array, the procedure that reads or inserts elements; without one the
// wrapper does nothing and returns 0, null or false.

REALarray REALCreateArray(int64_t elementType, int64_t upperBound);
int64_t REALGetArrayUBound(REALarray array);
/// The array takes a reference of its own. Returns whether the host has a procedure.
bool REALInsertArrayValueObject(REALarray array, int64_t index, REALobject value);
int64_t REALGetArrayValueInteger(REALarray array, int64_t index);
int64_t REALGetArrayValueInt64(REALarray array, int64_t index);
bool REALGetArrayValueBoolean(REALarray array, int64_t index);
float REALGetArrayValueSingle(REALarray array, int64_t index);
double REALGetArrayValueDouble(REALarray array, int64_t index);
REALstring REALGetArrayValueString(REALarray array, int64_t index);
REALtext REALGetArrayValueText(REALarray array, int64_t index);
REALobject REALGetArrayValueObject(REALarray array, int64_t index);

// Memory blocks

REALmemoryBlock REALNewMemoryBlockOriginal(int32_t size);
/// The block's bytes, borrowed from it.
void *REALMemoryBlockGetPtr(REALmemoryBlock block);
int64_t REALMemoryBlockGetSize(REALmemoryBlock block);

// Folder items

/// With a null name, writes the item's reference; false for an item that does not exist. With a name, writes
/// the parent's reference and the leaf name.
bool REALFSRefFromFolderItem(REALobject item, FSRef *ref, HFSUniStr255 *nameOrNull);
REALobject REALFolderItemFromParentFSRef(const FSRef *parent, const HFSUniStr255 *name);

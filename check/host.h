// A small host: it loads the library as a host of programs does, and calls its classes as a program would. A
// reference is a retain, and the containers are Foundation's. For the main thread.
#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>

/// An instance of a class, a variant or a string. Plugins find the instance data 48 bytes from its beginning.
@interface HostInstance : NSObject {
@public
    /// The name of the class, the very object that NewInstance found; nil for a variant and for a string.
    NSString *type;
    /// The code of its type as a variant.
    int64_t code;
    /// What it holds: a variant's number or string, a string's bytes and a NUL, the elements of an array, the
    /// entries of a Dictionary, the bytes of a MemoryBlock, the path of a FolderItem; otherwise its
    /// properties by their names. Owned.
    id value;
    /// What the program does at an observer's event; null for nothing.
    void (*gotNotification)(HostInstance *observer, HostInstance *notification);
    /// Of a string.
    uint32_t encoding;
    uint64_t data[4];
}
@end

using Instance = HostInstance *;
using HostString = HostInstance *;

namespace code {
constexpr int64_t Integer = 2, Int64 = 3, Single = 4, Double = 5, Date = 7, String = 8, Object = 9,
                  Boolean = 11, Array = 4096;
}

/// Loads the library and calls its entry point with the function that finds the host's functions by their
/// names. Nil, or why that was not possible.
NSString *LoadLibrary(NSString *path, void *(*findHostFunction)(const char *name));

/// What the library or one that it depends on exports under a C name; null without it.
void *FindSymbol(const char *name);

/// The names of the library's classes in the order in which it registered them.
NSArray *RegisteredClasses();

/// The 8-byte words of the record of a registered class; null for other classes.
const uint64_t *RecordOf(NSString *className);

/// A new instance on which no "Constructor" was called, autoreleased; nil for an unknown class.
Instance NewInstance(NSString *className);

/// How many instances and strings are alive.
int64_t LivingReferences();

/// The exception that was recorded last, as "class: message", which is then forgotten; "nothing" without one.
NSString *TakeException();

/// The function that a class, or one above it, has for a declaration. Ends the process without one.
void *FindMember(NSString *className, const char *declaration, bool isSetter = false);

/// Calls a method, or a property's getter, which takes the instance and 0.
template <typename Result = void, typename... Arguments>
Result Call(NSString *className, const char *declaration, Arguments... arguments)
{
    return reinterpret_cast<Result (*)(Arguments...)>(FindMember(className, declaration))(arguments...);
}

/// The Cocoa object that an instance of a wrapper class holds, borrowed; nil for nil.
id HandleOf(Instance instance);

constexpr uint32_t kUnknownEncoding = 0xFFFF;

// Values, autoreleased.
Instance Variant(int64_t code, id value);
/// An instance of one of the host's own classes.
Instance Value(NSString *className, id value);
Instance Date(NSArray *sixNumbers);
/// In UTF-8.
HostString String(NSString *text);
HostString StringOfBytes(NSData *bytes, uint32_t encoding);

/// The string's text, autoreleased: empty for null, nil for bytes that its encoding does not have.
NSString *TextOfString(HostString string);

/// A value as text, such as "Integer 5"; "Nil" for null. Autoreleased.
NSString *TextOf(Instance value);

// For the host's functions.

/// What the host writes into the record of an event.
constexpr uint64_t kEventKey = 0x4E6F74696679;

/// The class's name as the host keeps it; nil for an unknown class.
NSString *ClassNamed(const char *name);
NSString *SuperOf(NSString *className);
void RegisterClass(uint64_t *record);
void RecordException(Instance exception);

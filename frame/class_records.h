// The records in which the library describes its classes to the host. The layouts are the host's.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/host_types.h"
#include "frame/loaded_host.h"

/// The alignment of class records and member tables, in bytes.
inline constexpr size_t kRecordAlignment = 16;

inline constexpr uint64_t kClassFlags = 4;
inline constexpr uint64_t kPropertyFlags = 6;
inline constexpr uint64_t kMethodFlags = 4;

/// How the host reads or writes a property.
union REALaccessor {
    /// Null if the property cannot be read or written.
    void *function;
    /// `kFieldAccess`: the host reads or writes the field itself.
    uintptr_t field;
};

inline constexpr uintptr_t kFieldAccess = ~uintptr_t{0};

/// A property of a class, with getter `R (instance, parameter)` and setter `void (instance, parameter,
/// value)`.
struct REALpropertyRecord {
    void *unused0;
    const char *name;
    /// The host's name of the property's type.
    const char *type;
    uint64_t flags = kPropertyFlags;
    REALaccessor getter;
    REALaccessor setter;
    /// Passed to getter and setter; for a field its byte offset in the instance data.
    int64_t parameter;
    uint64_t unused7[5];
};

/// A method, shared method or computed property of a class.
struct REALmethodRecord {
    void *function;
    /// For a computed property that can be written, whose getter is `function`; else null.
    void *setter;
    /// In the host's language.
    const char *declaration;
    uint64_t flags = kMethodFlags;
    uint64_t unused4[2];
};

/// An event that a class raises.
struct REALeventRecord {
    /// In the host's language.
    const char *declaration;
    /// Filled by the host at registration.
    uint64_t key;
    uint64_t unused2[2];
};

/// A constant of a class.
struct REALconstantRecord {
    /// `name = value`, in the host's language.
    const char *declaration;
    uint64_t unused1[4];
};

/// A table of member records, empty by default.
template <typename Record>
struct REALrecords {
    Record *first = nullptr;
    uint64_t count = 0;

    constexpr REALrecords() = default;
    template <size_t Count>
    constexpr REALrecords(Record (&table)[Count]) : first(table), count(Count)
    {
    }
};

/// A class. The host keeps the record's address for the life of the process.
struct alignas(kRecordAlignment) REALclassDefinition {
    uint32_t version = kLatestRecordVersion;
    uint32_t versionHigh;
    const char *name;
    /// Null for a class without a superclass.
    const char *superName;
    /// Bytes of instance data that the host allocates for the library in each instance.
    uint64_t dataSize;
    uint64_t forSystemUse;
    void (*constructor)(REALobject instance);
    void (*destructor)(REALobject instance);
    REALrecords<REALpropertyRecord> properties;
    REALrecords<REALmethodRecord> methods;
    REALrecords<REALeventRecord> events;
    uint64_t unused13[5];
    REALrecords<REALconstantRecord> constants;
    uint64_t flags = kClassFlags;
    uint64_t unused21[2];
    REALrecords<REALmethodRecord> sharedMethods;
    uint64_t unused25[5];
};

/// The offset of an 8-byte slot.
constexpr size_t Slot(size_t number)
{
    return number * 8;
}

static_assert(sizeof(REALpropertyRecord) == 96);
static_assert(offsetof(REALpropertyRecord, name) == Slot(1));
static_assert(offsetof(REALpropertyRecord, type) == Slot(2));
static_assert(offsetof(REALpropertyRecord, flags) == Slot(3));
static_assert(offsetof(REALpropertyRecord, getter) == Slot(4));
static_assert(offsetof(REALpropertyRecord, setter) == Slot(5));
static_assert(offsetof(REALpropertyRecord, parameter) == Slot(6));

static_assert(sizeof(REALmethodRecord) == 48);
static_assert(offsetof(REALmethodRecord, setter) == Slot(1));
static_assert(offsetof(REALmethodRecord, declaration) == Slot(2));
static_assert(offsetof(REALmethodRecord, flags) == Slot(3));

static_assert(sizeof(REALeventRecord) == 32);
static_assert(offsetof(REALeventRecord, key) == Slot(1));

static_assert(sizeof(REALconstantRecord) == 40);

static_assert(sizeof(REALrecords<REALmethodRecord>) == 16);
static_assert(offsetof(REALrecords<REALmethodRecord>, count) == Slot(1));

static_assert(sizeof(REALclassDefinition) == 240);
static_assert(offsetof(REALclassDefinition, name) == Slot(1));
static_assert(offsetof(REALclassDefinition, superName) == Slot(2));
static_assert(offsetof(REALclassDefinition, dataSize) == Slot(3));
static_assert(offsetof(REALclassDefinition, constructor) == Slot(5));
static_assert(offsetof(REALclassDefinition, destructor) == Slot(6));
static_assert(offsetof(REALclassDefinition, properties) == Slot(7));
static_assert(offsetof(REALclassDefinition, methods) == Slot(9));
static_assert(offsetof(REALclassDefinition, events) == Slot(11));
static_assert(offsetof(REALclassDefinition, constants) == Slot(18));
static_assert(offsetof(REALclassDefinition, flags) == Slot(20));
static_assert(offsetof(REALclassDefinition, sharedMethods) == Slot(23));

/// A property that the host reads by a getter `R (instance, parameter)` and cannot write.
template <typename Getter>
constexpr REALpropertyRecord PropertyRecord(const char *name, const char *type, Getter *getter)
{
    return {.name = name, .type = type, .getter = {reinterpret_cast<void *>(getter)}};
}

/// A method, or a shared one.
template <typename Function>
constexpr REALmethodRecord MethodRecord(const char *declaration, Function *function)
{
    return {.function = reinterpret_cast<void *>(function), .declaration = declaration};
}

/// A computed property that can be written.
template <typename Getter, typename Setter>
constexpr REALmethodRecord ComputedPropertyRecord(const char *declaration, Getter *getter, Setter *setter)
{
    return {.function = reinterpret_cast<void *>(getter),
            .setter = reinterpret_cast<void *>(setter),
            .declaration = declaration};
}

// The class records that a library hands to the host, read as bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/language/declaration.h"

namespace qzlhost {

/// A getter or setter of this value: the host reads or writes the field itself.
inline void *const kFieldAccess = reinterpret_cast<void *>(~uintptr_t{0});

struct PropertyRecord {
    std::string name;
    Type type;
    uint64_t flags = 0;
    void *getter = nullptr;
    void *setter = nullptr;
    int64_t parameter = 0;
};

struct MethodRecord {
    /// As the record gives it.
    std::string text;
    Declaration declaration;
    void *function = nullptr;
    void *setter = nullptr;
    uint64_t flags = 0;
};

struct EventRecord {
    std::string text;
    Declaration declaration;
    /// Where the host writes the event's key: the slot in the library's record, which is 0 until then.
    uint64_t *keySlot = nullptr;
};

struct ConstantRecord {
    std::string text;
    ConstantDeclaration declaration;
};

struct ClassRecord {
    uint32_t version = 0;
    std::string name;
    /// Empty where there is none.
    std::string superName;
    uint64_t dataSize = 0;
    void *constructor = nullptr;
    void *destructor = nullptr;
    uint64_t flags = 0;
    std::vector<PropertyRecord> properties;
    std::vector<MethodRecord> methods;
    std::vector<EventRecord> events;
    std::vector<ConstantRecord> constants;
    std::vector<MethodRecord> sharedMethods;
    /// Where the record or a member record breaks the format, each as "class: place: what": a null address, a
    /// missing text or function, a slot that must be 0 and is not, a record or table off its 16-byte
    /// boundary, a malformed declaration, a count without a table or above 10,000 (both are read as 0). A
    /// faulty member is still in its list, with what could be read.
    std::vector<std::string> faults;
};

/// Reads the 240 bytes at `address` and the member records that they point to.
ClassRecord ReadClassRecord(void *address);

} // namespace qzlhost

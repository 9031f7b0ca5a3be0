// Instances of the host's classes: a header of 48 bytes, then the instance data.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/values/codes.h"
#include "host/values/counted.h"

namespace qzlhost {

struct Class;

/// What the host itself keeps in an instance of a built-in class.
struct Payload {
    virtual ~Payload() = default;
    /// The type code of the instance used as a variant.
    virtual int64_t Code() const { return code::Object; }
    /// The instance as a string; empty for most classes.
    virtual std::string AsString() const { return {}; }
    /// What a description of the instance adds to class and serial number.
    virtual std::string Detail() const { return {}; }
};

struct Instance : Counted {
    const Class *type = nullptr;
    Payload *payload = nullptr;
    uint64_t dataSize = 0;
};

inline constexpr size_t kHeaderSize = 48;
static_assert(sizeof(Instance) == kHeaderSize, "the instance data follow 48 bytes after the pointer");

inline void *DataOf(Instance *instance)
{
    return reinterpret_cast<char *>(instance) + kHeaderSize;
}

/// The payload, if it is a P; null for null.
template <typename P>
P *PayloadOf(const Instance *instance)
{
    return instance ? dynamic_cast<P *>(instance->payload) : nullptr;
}

/// What instances need of their classes, which host/calls/ has.
struct ClassHooks {
    const std::string &(*name)(const Class &type);
    /// See NewBuiltIn.
    Instance *(*newBuiltIn)(const char *className, std::unique_ptr<Payload> payload);
    /// Runs the destructors of the instance's classes.
    void (*runDestructors)(Instance *instance);
};

/// Set before the first instance is made.
inline ClassHooks gClassHooks{};

/// A new instance of one of the host's own classes, with one reference. A null payload becomes the class's
/// own.
inline Instance *NewBuiltIn(const char *className, std::unique_ptr<Payload> payload)
{
    return gClassHooks.newBuiltIn(className, std::move(payload));
}

/// A new instance with one reference. No constructor has run.
Instance *AllocateInstance(const Class &type, uint64_t dataSize, std::unique_ptr<Payload> payload);

/// Frees an instance. No destructor of its classes runs.
void FreeInstance(Instance *instance);

/// The type code of an instance used as a variant; 0 for null.
int64_t CodeOf(const Instance *instance);

/// Class and serial number, and the content of a boxed value. "Nil" for null.
std::string Describe(const Instance *instance);

} // namespace qzlhost

// Instances of the host's classes: a header of 48 bytes, then the instance data.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/values/counted.h"
#include "host/values/value.h"

namespace qzlhost {

struct Class;

/// What the host itself keeps in an instance of a built-in class.
struct Payload {
    virtual ~Payload() = default;
    /// The type code of the instance used as a variant.
    virtual int64_t Code() const { return code::Object; }
    /// The instance as a string, where it has one.
    virtual std::string AsString() const { return {}; }
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
template <class P>
P *PayloadOf(const Instance *instance)
{
    return instance ? dynamic_cast<P *>(instance->payload) : nullptr;
}

/// A new instance with one reference; the constructor hooks have run, topmost superclass first.
Instance *NewInstance(const Class &type);

/// As above, with this payload in place of the class's own.
Instance *NewInstance(const Class &type, std::unique_ptr<Payload> payload);

/// The type code of an instance used as a variant; 0 for null.
int64_t CodeOf(const Instance *instance);

/// Class and serial number, and the content of a boxed value. "Nil" for null.
std::string Describe(const Instance *instance);

/// Frees an instance without running anything of its classes.
void FreeInstance(Instance *instance);

} // namespace qzlhost

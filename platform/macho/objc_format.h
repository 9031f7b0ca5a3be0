// Objective-C metadata as it lies in an image for either processor.
#pragma once

#include <cstdint>

namespace macho::objc {

struct ClassData;

/// class_t: a class or metaclass. Its superclass is the runtime's, or another of the image.
struct Class {
    Class *isa, *superclass;
    void *cache, *vtable;
    /// The lowest bits are flags.
    uintptr_t data;
};
inline constexpr uintptr_t kDataFlags = 7;

/// class_ro_t.
struct ClassData {
    uint32_t flags, instanceStart, instanceSize, reserved;
    void *ivarLayout;
    const char *name;
    void *methods, *protocols, *ivars, *weakIvarLayout, *properties;
};

/// What lists of methods and of instance variables begin with. `count` entries follow, of `entrySize` bytes
/// each.
struct ListHeader {
    uint32_t entrySize, count;
};
/// The flag in `entrySize` of a list of methods whose pointers are 32-bit distances.
inline constexpr uint32_t kRelativeList = 0x80000000;

struct Method {
    const char *selector, *types;
    void *implementation;
};

struct Ivar {
    /// The variable that the code reads the offset from: 32 bits on arm64; on x86-64 64, the upper half of
    /// which is 0.
    uint32_t *offset;
    const char *name, *type;
    uint32_t alignmentShift, size;
};

struct Category {
    const char *name;
    void *type;
    void *instanceMethods, *classMethods, *protocols, *instanceProperties;
};

/// __NSConstantString: `characters` are UTF-16 units if the flags say so, else bytes of ASCII.
struct ConstantString {
    void *isa;
    uint64_t flags;
    const void *characters;
    uint64_t length;
};
inline constexpr uint64_t kStringKindMask = 0xFFF, kStringOfBytes = 0x7C8, kStringOfUnits = 0x7D0;

} // namespace macho::objc

// Looks methods up for messages from code of an image.
#include "platform/macho/dispatch.h"

#include <objc/message.h>
#include <objc/runtime.h>

#include <cstring>
#include <map>
#include <shared_mutex>
#include <utility>

#include "platform/macho/processor.h"

namespace {

constexpr uint64_t kUnsigned = uint64_t{1} << 31;

/// The extension for results of the type that a method's types begin with.
uint64_t ExtensionOf(const char *types)
{
    constexpr const char *kQualifiers = "rnNoORV";
    types += std::strspn(types, kQualifiers);
    switch (*types) {
    case 'c':
        return 24;
    case 'C':
    case 'B':
        return 24 | kUnsigned;
    case 's':
        return 16;
    case 'S':
        return 16 | kUnsigned;
    default:
        return 0;
    }
}

/// The extension of a method's result. A method with arguments on the stack can only be jumped to, so its
/// result stays as it is.
uint64_t ExtensionOf(Class type, SEL selector)
{
    constexpr unsigned kRegisters = 8;
    const Method method = class_getInstanceMethod(type, selector);
    if (method == nullptr || method_getNumberOfArguments(method) > kRegisters)
        return 0;
    return ExtensionOf(method_getTypeEncoding(method));
}

machoMethod Found(IMP function, Class type, SEL selector)
{
    void *const address = reinterpret_cast<void *>(function);
    if constexpr (macho::kThisProcessor == macho::Processor::X86_64)
        return {address, 0};
    static std::shared_mutex mutex;
    static auto &extensions = *new std::map<std::pair<void *, SEL>, uint64_t>;
    const std::pair key(address, selector);
    {
        const std::shared_lock lock(mutex);
        if (const auto known = extensions.find(key); known != extensions.end())
            return {address, known->second};
    }
    const uint64_t extension = ExtensionOf(type, selector);
    const std::lock_guard lock(mutex);
    extensions.emplace(key, extension);
    return {address, extension};
}

} // namespace

machoMethod machoLookUp(void *receiver, void *selector)
{
    const id object = static_cast<id>(receiver);
    const SEL message = static_cast<SEL>(selector);
    return Found(objc_msg_lookup(object, message), object_getClass(object), message);
}

machoMethod machoLookUpSuper(const machoSuper *super, void *selector)
{
    const Class type = class_getSuperclass(static_cast<Class>(super->type));
    const SEL message = static_cast<SEL>(selector);
    struct objc_super platformSuper = {static_cast<id>(super->receiver), type};
    return Found(objc_msg_lookup_super(&platformSuper, message), type, message);
}

// A class of the host and its members, whoever registered it.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/calls/native_call.h"
#include "host/language/class_record.h"
#include "host/language/declaration.h"
#include "host/values/object.h"

namespace qzlhost {

/// The library's reference for a class. Lives as long as the process, so that a reference that a library
/// keeps is valid in a later host.
struct ClassReference {
    std::string name;
};

/// Read and written by `R (self, parameter)` and `void (self, parameter, value)`; a computed one by
/// `R (self)` and `void (self, value)`; or as a field of the instance data.
struct Property {
    std::string name;
    Type type;
    void *getter = nullptr;
    void *setter = nullptr;
    int64_t parameter = 0;
    bool computed = false;
};

struct NativeMethod {
    Declaration declaration;
    void *function = nullptr;
};

struct EventDeclaration {
    Declaration declaration;
    /// Identifies the event when the library asks for its handler.
    uint64_t key = 0;
};

struct Class {
    std::string name;
    /// Empty where there is none.
    std::string superName;
    const ClassReference *reference = nullptr;
    uint64_t dataSize = 0;
    /// Hooks that run when an instance is made and when it is destroyed.
    std::function<void(Instance *)> constructor = nullptr;
    std::function<void(Instance *)> destructor = nullptr;
    /// Null if the host keeps nothing in an instance.
    std::unique_ptr<Payload> (*makePayload)() = nullptr;

    std::vector<Property> properties = {};
    std::vector<NativeMethod> methods = {};
    /// Called without an instance. Computed properties of the class are among them.
    std::vector<NativeMethod> sharedMethods = {};
    std::vector<EventDeclaration> events = {};
    std::vector<ConstantDeclaration> constants = {};
    /// Events of superclasses that this class implements.
    std::vector<NativeMethod> handlers = {};
    /// The native functions of members that a program implements.
    std::vector<std::unique_ptr<NativeCallback>> callbacks = {};

    /// Looked up by name on first use.
    mutable std::atomic<const Class *> super{nullptr};
};

} // namespace qzlhost

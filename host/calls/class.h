// A class of the host as its members are found and called, whoever registered it.
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

/// What the library gets as its reference for a class. Lives as long as the process, so that a
/// reference that a library keeps is good in a later host too.
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
    /// What the library asks the event with.
    uint64_t key = 0;
};

struct Class {
    std::string name;
    /// Empty where there is none.
    std::string superName;
    const ClassReference *reference = nullptr;
    uint64_t dataSize = 0;
    /// Hooks: run at the start and at the end of an instance.
    std::function<void(Instance *)> constructor = nullptr;
    std::function<void(Instance *)> destructor = nullptr;
    /// Null where the host keeps nothing in an instance.
    std::unique_ptr<Payload> (*makePayload)() = nullptr;

    std::vector<Property> properties = {};
    std::vector<NativeMethod> methods = {};
    /// Called without an instance; computed properties of the class among them.
    std::vector<NativeMethod> sharedMethods = {};
    std::vector<EventDeclaration> events = {};
    std::vector<ConstantDeclaration> constants = {};
    /// Events of superclasses that this class implements.
    std::vector<NativeMethod> handlers = {};
    /// The functions of a program's members.
    std::vector<std::unique_ptr<NativeCallback>> callbacks = {};

    /// Found by name when it is first asked for.
    mutable std::atomic<const Class *> super{nullptr};
};

} // namespace qzlhost

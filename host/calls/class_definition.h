// Classes as programs write them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/values/value.h"

namespace qzlhost {

/// What a program's member does.
using ProgramBody = std::function<Value(const Value &self, const std::vector<Value> &arguments)>;

/// A member that a class of a program or of the host itself implements.
struct Method {
    /// In the host's language.
    std::string declaration;
    ProgramBody body;
};

/// A class that is not the library's: a program's own, derived from any class, or one with instance data that
/// stands in for another library's.
struct ClassDefinition {
    std::string name;
    std::string super;
    uint64_t dataSize = 0;
    /// Called with the new instance; its data lie 48 bytes after the pointer.
    std::function<void(Instance *)> constructor = nullptr;
    std::function<void(Instance *)> destructor = nullptr;
    std::vector<Method> methods = {};
    /// Implementations of events that a superclass declares, by the event's name in `declaration`.
    std::vector<Method> events = {};
};

} // namespace qzlhost

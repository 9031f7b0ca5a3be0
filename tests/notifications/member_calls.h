// The functions behind the members of the library's classes, and direct calls of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/host.h"

/// One function of a class: a hook, a getter, a setter or a method. Properties that the host reads and writes
/// itself have none.
struct MemberFunction {
    enum class Kind { Hook, Getter, Setter, Method, SharedMethod };

    std::string className;
    /// "constructor hook", "destructor hook", a property's name or a method's declaration; a setter's ends
    /// with " =".
    std::string member;
    Kind kind = Kind::Method;
    void *function = nullptr;
    /// The parameter of a property; a computed one has none.
    std::optional<int64_t> parameter;
    qzlhost::Declaration declaration = {};

    std::string Key() const { return className + ": " + member; }
    /// An argument for each parameter: a name for a string, 0 and false for numbers, Nil for all else.
    std::vector<qzlhost::Value> PlainArguments() const;
};

/// The functions of all classes that the library registered.
std::vector<MemberFunction> MemberFunctions(const qzlhost::Host &host);

/// The function with this key. Throws std::out_of_range if there is none.
MemberFunction FindMember(const qzlhost::Host &host, const std::string &key);

/// The outcome of a call.
struct MemberAnswer {
    /// The 64 bits that the function returned; 0 for a function that returns nothing.
    int64_t result = 0;
    /// The same as a host value, which owns what was returned.
    qzlhost::Value value;
    /// Whether a C++ or Cocoa exception left the function.
    bool threw = false;
};

/// Calls the function directly: a host exception stays recorded, where a program's call would throw it. A
/// shared method gets no `self`.
MemberAnswer CallMember(const MemberFunction &member, const qzlhost::Value &self,
                        const std::vector<qzlhost::Value> &arguments);

// The functions that the library gives the host for its classes' members, called as they are.
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
    /// "constructor hook", "destructor hook", a property's name or a method's declaration; after a setter's
    /// there is " =".
    std::string member;
    Kind kind = Kind::Method;
    void *function = nullptr;
    /// A property's parameter; nothing for a computed one.
    std::optional<int64_t> parameter;
    qzlhost::Declaration declaration = {};

    std::string Key() const { return className + ": " + member; }
    /// An argument for each parameter: a name for a string, 0 and false for numbers, Nil for all else.
    std::vector<qzlhost::Value> PlainArguments() const;
};

/// Of all classes that the library registered.
std::vector<MemberFunction> MemberFunctions(const qzlhost::Host &host);

/// The one with this key. Throws std::out_of_range without one.
MemberFunction FindMember(const qzlhost::Host &host, const std::string &key);

/// What a call did.
struct MemberAnswer {
    /// What the function returned, whole; 0 for a function that returns nothing.
    int64_t result = 0;
    /// The same as a program's value, which owns it.
    qzlhost::Value value;
    /// Whether it ended with an exception of C++ or Cocoa.
    bool threw = false;
};

/// Calls the function without what a program's call has around it: a host exception stays recorded. A shared
/// method is called without `self`.
MemberAnswer CallMember(const MemberFunction &member, const qzlhost::Value &self,
                        const std::vector<qzlhost::Value> &arguments);

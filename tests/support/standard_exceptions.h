// C++ exceptions and the host exceptions that they become, in the order of the guard's handlers.
#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

#include "frame/host_types.h"
#include "host/host.h"

struct StandardRow {
    const char *name;
    std::function<void()> thrower;
    const char *className;
    std::string message;
};

/// A program's own class derived from a standard one.
template <typename Base>
struct Derived : Base {
    using Base::Base;
};

struct DerivedBadAlloc : std::bad_alloc {
    const char *what() const noexcept override { return "not this text"; }
};

struct OwnException : std::exception {
    const char *what() const noexcept override { return "own"; }
};

struct OwnBadCast : std::bad_cast {
    const char *what() const noexcept override { return "cast"; }
};

inline const StandardRow kStandardRows[] = {
    {"BadAlloc", [] { throw std::bad_alloc(); }, "OutOfMemoryException", "Failed to allocate memory."},
    {"DerivedBadAlloc", [] { throw DerivedBadAlloc(); }, "OutOfMemoryException",
     "Failed to allocate memory."},
    {"BadArrayNewLength", [] { throw std::bad_array_new_length(); }, "OutOfMemoryException",
     "Failed to allocate memory."},
    {"RangeError", [] { throw std::range_error("range"); }, "OutOfBoundsException", "range"},
    {"DerivedRangeError", [] { throw Derived<std::range_error>("derived"); }, "OutOfBoundsException",
     "derived"},
    {"OutOfRange", [] { throw std::out_of_range("out"); }, "OutOfBoundsException", "out"},
    {"DerivedOutOfRange", [] { throw Derived<std::out_of_range>("derived"); }, "OutOfBoundsException",
     "derived"},
    {"OverflowError", [] { throw std::overflow_error("over"); }, "OutOfBoundsException", "over"},
    {"UnderflowError", [] { throw std::underflow_error("under"); }, "OutOfBoundsException", "under"},
    {"LogicError", [] { throw std::logic_error("logic"); }, "RuntimeException", "logic"},
    {"LengthError", [] { throw std::length_error("length"); }, "RuntimeException", "length"},
    {"RuntimeError", [] { throw std::runtime_error("runtime"); }, "RuntimeException", "runtime"},
    {"DerivedRuntimeError", [] { throw Derived<std::runtime_error>("derived"); }, "RuntimeException",
     "derived"},
    {"BadCast", [] { throw OwnBadCast(); }, "IllegalCastException", "cast"},
    {"Exception", [] { throw OwnException(); }, "RuntimeException", "own"},
    {"ExceptionWithoutText", [] { throw std::logic_error(""); }, "RuntimeException", ""},
    {"ExceptionWithALongText", [] { throw std::runtime_error(std::string(1000, 'x')); }, "RuntimeException",
     std::string(1000, 'x')},
    {"Number", [] { throw 42; }, "RuntimeException", "Sorry, but there was an unnamed C++ Exception."},
    {"Pointer", [] { throw "text"; }, "RuntimeException", "Sorry, but there was an unnamed C++ Exception."},
};

/// Replaces the host's string builder. Throws a given exception once.
class ThrowingBuilder {
public:
    using Function = REALstring (*)(const char *, int32_t);

    static void Install(qzlhost::Host &unloaded)
    {
        real_ = reinterpret_cast<Function>(unloaded.Resolver()("REALBuildString"));
        unloaded.Replace("REALBuildString", reinterpret_cast<void *>(&Build));
    }

    static void ThrowNext(std::function<void()> thrower) { next_ = std::move(thrower); }

private:
    static REALstring Build(const char *bytes, int32_t length)
    {
        if (next_) {
            const std::function<void()> thrower = std::move(next_);
            next_ = nullptr;
            thrower();
        }
        return real_(bytes, length);
    }

    static inline Function real_;
    static inline std::function<void()> next_;
};

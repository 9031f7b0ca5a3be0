// The arguments of host functions: which ones are acceptable, and how they read in the trace.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "host/calls/class.h"
#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

/// A pointer that must not be null. As large as the pointer, and passed like it.
template <typename T>
struct NotNull {
    T *pointer;

    T *operator->() const { return pointer; }
    T &operator*() const { return *pointer; }
};

/// An instance whose payload is a P; not null.
template <typename P>
struct Of {
    Instance *instance;

    P *operator->() const { return PayloadOf<P>(instance); }
    P &operator*() const { return *PayloadOf<P>(instance); }
};

/// Whether the argument is alive and of the right kind; records a mistake if it is not. Null counts as alive.
bool IsAlive(const Instance *instance);
bool IsAlive(const String *string);
bool IsAlive(const Text *text);
bool IsAlive(const ClassReference *reference);
/// Both record a mistake and return false.
bool RefuseNull();
bool RefuseOtherPayload(const Instance *instance);

template <typename T>
bool IsAcceptable(const T &argument)
{
    if constexpr (std::is_convertible_v<T, const Instance *> || std::is_convertible_v<T, const String *> ||
                  std::is_convertible_v<T, const Text *> || std::is_convertible_v<T, const ClassReference *>)
        return IsAlive(argument);
    return true;
}

template <typename T>
bool IsAcceptable(NotNull<T> argument)
{
    return argument.pointer ? IsAcceptable(argument.pointer) : RefuseNull();
}

template <typename P>
bool IsAcceptable(Of<P> argument)
{
    if (!argument.instance)
        return RefuseNull();
    return IsAcceptable(argument.instance) &&
           (PayloadOf<P>(argument.instance) || RefuseOtherPayload(argument.instance));
}

/// The argument as text, also if it is a pointer that is not alive.
std::string Shown(const Instance *instance);
std::string Shown(const String *string);
std::string Shown(const Text *text);
std::string Shown(const ClassReference *reference);
/// In quotation marks.
std::string Shown(const char *name);
std::string Shown(const void *pointer);

template <typename T>
std::string Shown(const T &number)
{
    static_assert(std::is_arithmetic_v<T>);
    if constexpr (std::is_same_v<T, bool>)
        return number ? "True" : "False";
    else
        return std::to_string(number);
}

template <typename T>
std::string Shown(T *pointer)
{
    if constexpr (std::is_convertible_v<T *, const Counted *>)
        return Shown(static_cast<const T *>(pointer));
    else
        return Shown(reinterpret_cast<const void *>(pointer));
}

template <typename T>
std::string Shown(NotNull<T> argument)
{
    return Shown(argument.pointer);
}

template <typename P>
std::string Shown(Of<P> argument)
{
    return Shown(argument.instance);
}

} // namespace qzlhost

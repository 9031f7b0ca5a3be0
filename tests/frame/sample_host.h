// A resolver whose results a test chooses, and host functions that record their arguments.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>

/// The resolver's results, and how often it was asked for each name.
inline std::map<std::string, void *> gAnswers;
inline std::map<std::string, int> gAsks;

inline void *Resolve(const char *name)
{
    ++gAsks[name];
    const auto found = gAnswers.find(name);
    return found == gAnswers.end() ? nullptr : found->second;
}

/// A value other than the type's empty value.
template <typename T>
T Sample()
{
    if constexpr (std::is_same_v<T, bool>)
        return true;
    else if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(uintptr_t{0x1230});
    else if constexpr (sizeof(T) == sizeof(int64_t) && std::is_integral_v<T>)
        return static_cast<T>(-0x123456789ABCDEF); // too wide for anything narrower
    else
        return static_cast<T>(-7);
}

/// A host function that records its arguments and returns a sample.
template <typename Result, typename... Parameters>
struct HostFunction {
    static inline std::tuple<std::decay_t<Parameters>...> arguments;
    static inline int calls = 0;

    static Result Call(Parameters... given)
    {
        ++calls;
        arguments = std::make_tuple(given...);
        if constexpr (!std::is_void_v<Result>)
            return Sample<Result>();
    }
};

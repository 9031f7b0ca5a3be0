// The wrapper around every native function of the host: checks, trace and faults.
#pragma once

#include <atomic>
#include <string>
#include <type_traits>

#include "host/host.h"
#include "host/interface/arguments.h"
#include "host/values/accounts.h"

namespace qzlhost {

/// What the wrapper of one function knows about it.
struct NativeFunction {
    std::atomic<const char *> name{nullptr};
    std::atomic<bool> fails{false};
};

/// Whether calls are written down now.
bool Traces();
void TraceCall(const NativeFunction &function, std::string arguments);
/// Whether a host lives that can serve the call.
bool HasHost();

/// Whether a test looks on at the calls that come from outside the host.
bool Intercepts();
/// What the test does to a call: answers whether the call goes on, and may throw.
bool Intercept(const NativeFunction &function, CallMoment moment);

template <class... A>
std::string ShownList(const A &...arguments)
{
    std::string list;
    ((list += (list.empty() ? "" : ", ") + Shown(arguments)), ...);
    return list;
}

/// `Function` as the library calls it: with arguments that are not acceptable, or when it is to fail, nothing
/// is done and the empty value returned. `Alias` tells apart names that share a function.
template <auto Function, int Alias = 0>
struct Thunk;

template <class R, class... A, R (*Function)(A...), int Alias>
struct Thunk<Function, Alias> {
    static inline NativeFunction description;

    static R Call(A... arguments)
    {
        if (!HasHost())
            return R();
        const bool intercepted = Intercepts();
        const FunctionScope scope(description.name);
        if (Traces())
            TraceCall(description, ShownList(arguments...));
        if (!(IsAcceptable(arguments) && ...) || description.fails)
            return R();
        if (intercepted && !Intercept(description, CallMoment::Begins))
            return R();
        if constexpr (std::is_void_v<R>) {
            Function(arguments...);
            if (intercepted)
                Intercept(description, CallMoment::Ends);
        } else {
            return Function(arguments...);
        }
    }
};

/// The address that the library gets for a function which the trace calls `name`.
template <auto Function, int Alias = 0>
void *Native(const char *name)
{
    Thunk<Function, Alias>::description.name = name;
    return reinterpret_cast<void *>(&Thunk<Function, Alias>::Call);
}

} // namespace qzlhost

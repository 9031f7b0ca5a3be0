// The wrapper around every native function of the host: checks, trace and faults.
#pragma once

#include <atomic>
#include <string>
#include <type_traits>

#include "host/interface/arguments.h"
#include "host/interface/session.h"
#include "host/values/accounts.h"

namespace qzlhost {

/// What the wrapper of one function knows about it.
struct NativeFunction {
    std::atomic<const char *> name{nullptr};
    std::atomic<bool> fails{false};
};

template <typename... A>
std::string ShownList(const A &...arguments)
{
    std::string list;
    ((list += (list.empty() ? "" : ", ") + Shown(arguments)), ...);
    return list;
}

template <auto Function, int Alias>
inline NativeFunction gNativeFunction;

/// `Function` as the library calls it. If an argument is not acceptable, or the function is to fail, the call
/// does nothing and returns the empty value. `Alias` distinguishes names that share a function.
template <auto Function, int Alias = 0>
struct Thunk;

template <typename R, typename... A, R (*Function)(A...), int Alias>
struct Thunk<Function, Alias> {
    static R Call(A... arguments)
    {
        const NativeFunction &native = gNativeFunction<Function, Alias>;
        Session *const session = Current<Session>();
        if (!session)
            return R();
        const bool intercepted = session->interceptor && !InsideFunction();
        const FunctionScope scope(native.name);
        if (session->traces)
            session->trace.Add(native.name, ShownList(arguments...));
        if (!(IsAcceptable(arguments) && ...) || native.fails)
            return R();
        if (intercepted && !session->interceptor(native.name, CallMoment::Begins))
            return R();
        if constexpr (std::is_void_v<R>) {
            Function(arguments...);
            if (intercepted)
                session->interceptor(native.name, CallMoment::Ends);
        } else {
            return Function(arguments...);
        }
    }
};

/// The address that the library gets for a function which the trace calls `name`.
template <auto Function, int Alias = 0>
void *Native(const char *name)
{
    gNativeFunction<Function, Alias>.name = name;
    return reinterpret_cast<void *>(&Thunk<Function, Alias>::Call);
}

} // namespace qzlhost

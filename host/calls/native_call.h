// Calls of native functions whose signature is known only at run time, and functions made at run time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "host/language/declared_types.h"

namespace qzlhost {

/// One argument or result at machine level; the NativeType says which member is in use. `integer` holds whole
/// numbers of every width, sign- or zero-extended by their type.
union NativeValue {
    int64_t integer;
    float single;
    double number;
    void *pointer;
};

struct NativeSignature {
    NativeType result = NativeType::Nothing;
    std::vector<NativeType> parameters;
};

/// The size of a variable of the type, in bytes.
size_t WidthOf(NativeType type);

/// The value cut to its type's width, and extended from there.
NativeValue Narrowed(NativeType type, NativeValue value);

/// Calls `function`. `arguments` has one value for each parameter. C++ and Cocoa exceptions pass through.
NativeValue CallNative(void *function, const NativeSignature &signature, const NativeValue *arguments);

/// Calls `void (argument)`. C++ and Cocoa exceptions pass through.
inline void CallProcedure(void *function, void *argument)
{
    reinterpret_cast<void (*)(void *)>(function)(argument);
}

/// A native function made at run time that calls `body` with its arguments. The function lives as
/// long as this object.
class NativeCallback {
public:
    using Body = std::function<NativeValue(const NativeValue *arguments)>;

    NativeCallback(NativeSignature signature, Body body);
    ~NativeCallback();
    NativeCallback(const NativeCallback &) = delete;
    NativeCallback &operator=(const NativeCallback &) = delete;

    void *Function() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace qzlhost

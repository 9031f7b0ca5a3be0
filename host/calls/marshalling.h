// Values as native arguments and results, and back.
#pragma once

#include <vector>

#include "host/calls/native_call.h"
#include "host/language/declaration.h"
#include "host/values/value.h"

namespace qzlhost {

/// Arguments in their native form, which is valid while this lives.
class NativeArguments {
public:
    /// Arguments that the call leaves out get the declaration's defaults.
    NativeArguments(const Declaration &declaration, Instance *self, const std::vector<Value> &arguments);

    void Add(const Type &type, const Value &value);
    void AddInteger(int64_t integer);

    NativeValue Call(void *function, NativeType result) const;

private:
    std::vector<NativeType> types_;
    std::vector<NativeValue> values_;
    std::vector<Value> kept_;
};

/// A native result as a value, which takes over the result's reference.
Value FromNativeResult(const Type &type, NativeValue native);
/// A native argument as a value with a reference of its own.
Value FromNativeArgument(const Type &type, NativeValue native);
/// A value as a native result, with a reference for the receiver.
NativeValue ToNativeResult(const Type &type, const Value &value);

/// The value of a constant in a declaration.
Value ValueOf(const Literal &literal);

} // namespace qzlhost

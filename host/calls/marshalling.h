// Values as native arguments and results, and back.
#pragma once

#include <vector>

#include "host/calls/native_call.h"
#include "host/language/declaration.h"
#include "host/values/value.h"

namespace qzlhost {

/// The native form of arguments, which lives as long as this.
class NativeArguments {
public:
    /// Arguments that a declaration leaves out get their defaults.
    NativeArguments(const Declaration &declaration, Instance *self, const std::vector<Value> &arguments);

    void Add(const Type &type, const Value &value);
    void AddInteger(int64_t integer);

    NativeValue Call(void *function, NativeType result) const;

private:
    void AddPointer(void *pointer);

    std::vector<NativeType> types_;
    std::vector<NativeValue> values_;
    std::vector<Value> kept_;
};

/// A native result as a value, which takes over its reference.
Value FromNativeResult(const Type &type, NativeValue native);
/// A native argument as a value with a reference of its own.
Value FromNativeArgument(const Type &type, NativeValue native);
/// A value as a native result; a reference is handed over with it.
NativeValue ToNativeResult(const Type &type, const Value &value);

/// What a default in a declaration means.
Value ValueOf(const Literal &literal);

} // namespace qzlhost

// Members of a class and its superclasses: found by name, by declaration, by arguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/calls/class.h"
#include "host/values/value.h"

namespace qzlhost {

/// Null where there is none. Every instance has the properties of a variant besides those of its class.
const Property *FindProperty(const Class &type, std::string_view name);

/// The most derived method with this very declaration; null where there is none.
const NativeMethod *FindMethod(const Class &type, const Declaration &declaration);

/// The methods of this name with the classes that declare them, most derived first.
struct Overload {
    const Class *type;
    const NativeMethod *method;
};
std::vector<Overload> FindOverloads(const Class &type, std::string_view name, bool shared);

/// How badly a value fits a parameter: 0 for its own type, -1 for no fit.
int Misfit(const Value &value, const Type &type);

/// The overload that takes these arguments best; of equally good ones the more derived. Throws UsageError,
/// with the overloads listed, if none does, or two do equally well; `what` names the call.
const NativeMethod &ChooseOverload(const std::vector<Overload> &overloads,
                                   const std::vector<Value> &arguments, const std::string &what);
/// As above, but null where none takes the arguments.
const NativeMethod *FindFittingOverload(const std::vector<Overload> &overloads,
                                        const std::vector<Value> &arguments, const std::string &what);

} // namespace qzlhost

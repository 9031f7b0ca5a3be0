// Members of a class and its superclasses: found by name, by declaration, by arguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/calls/class.h"
#include "host/values/value.h"

namespace qzlhost {

/// Null if there is none. Every instance has the properties of a variant besides those of its class.
const Property *FindProperty(const Class &type, std::string_view name);

/// The most derived method with this signature; null if there is none.
const NativeMethod *FindMethod(const Class &type, const Declaration &declaration);

/// The methods of this name with the classes that declare them, most derived first.
struct Overload {
    const Class *type;
    const NativeMethod *method;
};
std::vector<Overload> FindOverloads(const Class &type, std::string_view name, bool shared);

/// How badly a value fits a parameter's type: 0 for an exact match, -1 for no fit.
int Misfit(const Value &value, const Type &type);

/// The overload that fits these arguments best; of equally good ones the most derived. Throws UsageError,
/// which lists the overloads, if none fits or two of one class fit equally well; `what` names the call.
const NativeMethod &ChooseOverload(const std::vector<Overload> &overloads,
                                   const std::vector<Value> &arguments, const std::string &what);
/// As above, but null if none fits.
const NativeMethod *FindFittingOverload(const std::vector<Overload> &overloads,
                                        const std::vector<Value> &arguments, const std::string &what);

} // namespace qzlhost

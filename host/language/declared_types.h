// The host language's built-in types, by name.
#pragma once

#include <string_view>

#include "host/language/declaration.h"

namespace qzlhost {

struct BuiltInType {
    std::string_view name;
    TypeKind kind;
    NativeType native;
    /// What kind of constant a variable of the type holds before anything is assigned to it.
    Literal::Kind empty;
};

/// The built-in type that the name means, in any case of letters; null for a class.
const BuiltInType *FindBuiltInType(std::string_view name);

/// The type of this name, or an array of it.
Type MakeType(std::string_view name, bool array);

/// The constant that a variable of the type holds before anything is assigned to it.
Literal EmptyValue(const Type &type);

} // namespace qzlhost

// The host language's declarations of members: parsed, compared, and printed as one normal form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/declaration_error.h"
#include "host/language/declared_types.h"

namespace qzlhost {

struct Parameter {
    std::string name;
    Type type;
    /// An Optional parameter without a default has the empty value of its type.
    std::optional<Literal> defaultValue;
    bool assigns = false;
    /// The callee gets the address of a variable of `type`.
    bool byReference = false;
};

/// A method, event or computed property.
struct Declaration {
    std::string name;
    std::vector<Parameter> parameters;
    Type result;
    /// `name As Type` without parentheses: a getter, and perhaps a setter.
    bool computedProperty = false;

    /// The fewest arguments that a call can pass: all up to the last parameter without a default.
    size_t RequiredArguments() const;
    /// The declaration in normal form: `name(parameter As Type = default, ...) As Type`, a computed property
    /// as `name As Type`. Parsing it gives the same declaration again.
    std::string ToString() const;
};

struct ConstantDeclaration {
    std::string name;
    Literal value;
};

/// The type of this name; `name()` is an array. An unknown name is a class. Throws DeclarationError.
Type ParseType(std::string_view text);

/// A method, computed property or event. A parameter list without a name and parentheses is a
/// constructor's. Throws DeclarationError.
Declaration ParseDeclaration(std::string_view text);

/// `name = value`. Throws DeclarationError.
ConstantDeclaration ParseConstant(std::string_view text);

/// Whether two declarations name the same member: name, parameter types, Assigns, ByRef and result agree.
/// Letter case, parameter names and defaults do not count.
bool SameSignature(const Declaration &a, const Declaration &b);

} // namespace qzlhost

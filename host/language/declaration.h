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
    /// A bare name, the word as and a type: a getter, and a setter where there is one.
    bool computedProperty = false;

    /// How many arguments a call must give at least: the last parameter without a default counts.
    size_t RequiredArguments() const;
    /// The declaration in normal form: `name(parameter As Type = default, ...) As Type`, a computed property
    /// as `name As Type`. Parsed again it gives the same declaration.
    std::string ToString() const;
};

struct ConstantDeclaration {
    std::string name;
    Literal value;
};

/// The type that a name means, with () after it an array; an unknown name is a class. Throws DeclarationError
/// for what is no name.
Type ParseType(std::string_view text);

/// A method, computed property or event. A parameter list without a name and parentheses is a
/// constructor's. Throws DeclarationError.
Declaration ParseDeclaration(std::string_view text);

/// `name = value`. Throws DeclarationError.
ConstantDeclaration ParseConstant(std::string_view text);

/// Whether two declarations name one member: name, parameter types, Assigns and result agree;
/// letters' case, parameter names and defaults do not count.
bool SameSignature(const Declaration &a, const Declaration &b);

} // namespace qzlhost

// The host language's declarations of members: parsed, compared, and printed as one normal form.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qzlhost {

/// How a value of a declared type travels through a native call.
enum class NativeType {
    Nothing,
    Boolean,
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Single,
    Double,
    Pointer
};

/// What a declared type is to a program.
enum class TypeKind {
    Nothing,
    Boolean,
    Integer,
    Single,
    Double,
    Currency,
    Color,
    String,
    Text,
    Variant,
    Object,
    Array,
    Pointer
};

/// A type as a declaration names it: "Integer", "String", "NSNotificationQZL", "Variant()".
struct Type {
    TypeKind kind = TypeKind::Nothing;
    NativeType native = NativeType::Nothing;
    /// The name as written, without the parentheses of an array.
    std::string name;
};

/// A constant in a declaration: a parameter's default or a constant's value.
struct Literal {
    // Not Nil: that is a macro in Objective-C.
    enum class Kind { Null, Boolean, Integer, Number, String } kind = Kind::Null;
    bool boolean = false;
    int64_t integer = 0;
    double number = 0;
    /// UTF-8.
    std::string string;
};

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

/// A text that is no declaration; what() quotes the text and says where and what.
class DeclarationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
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

/// Whether two names of the host language are the same: the case of ASCII letters does not count.
bool SameName(std::string_view a, std::string_view b);

} // namespace qzlhost

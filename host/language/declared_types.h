// The types that declarations name, and constants of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qzlhost {

/// How a native call passes a value of a declared type.
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

struct BuiltInType {
    std::string_view name;
    TypeKind kind;
    NativeType native;
    /// The kind of constant that a new variable of the type holds.
    Literal::Kind empty;
};

/// The built-in type of this name, in any letter case; null for a class.
const BuiltInType *FindBuiltInType(std::string_view name);

/// The type of this name, or an array of it.
Type MakeType(std::string_view name, bool array);

/// The constant that a new variable of the type holds.
Literal EmptyValue(const Type &type);

} // namespace qzlhost

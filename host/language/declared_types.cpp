// The types that declarations name, and constants of them.
#include "host/language/declared_types.h"

#include <algorithm>
#include <iterator>

#include "host/language/names.h"

namespace qzlhost {

namespace {

constexpr BuiltInType kBuiltInTypes[] = {
    {"Boolean", TypeKind::Boolean, NativeType::Boolean, Literal::Kind::Boolean},
    {"Byte", TypeKind::Integer, NativeType::UInt8, Literal::Kind::Integer},
    {"Color", TypeKind::Color, NativeType::UInt32, Literal::Kind::Integer},
    {"Currency", TypeKind::Currency, NativeType::Int64, Literal::Kind::Integer},
    {"Double", TypeKind::Double, NativeType::Double, Literal::Kind::Number},
    {"Int16", TypeKind::Integer, NativeType::Int16, Literal::Kind::Integer},
    {"Int32", TypeKind::Integer, NativeType::Int32, Literal::Kind::Integer},
    {"Int64", TypeKind::Integer, NativeType::Int64, Literal::Kind::Integer},
    {"Int8", TypeKind::Integer, NativeType::Int8, Literal::Kind::Integer},
    {"Integer", TypeKind::Integer, NativeType::Int64, Literal::Kind::Integer},
    {"Object", TypeKind::Object, NativeType::Pointer, Literal::Kind::Null},
    {"Ptr", TypeKind::Pointer, NativeType::Pointer, Literal::Kind::Null},
    {"Single", TypeKind::Single, NativeType::Single, Literal::Kind::Number},
    {"String", TypeKind::String, NativeType::Pointer, Literal::Kind::String},
    {"Text", TypeKind::Text, NativeType::Pointer, Literal::Kind::String},
    {"UInt16", TypeKind::Integer, NativeType::UInt16, Literal::Kind::Integer},
    {"UInt32", TypeKind::Integer, NativeType::UInt32, Literal::Kind::Integer},
    {"UInt64", TypeKind::Integer, NativeType::UInt64, Literal::Kind::Integer},
    {"UInt8", TypeKind::Integer, NativeType::UInt8, Literal::Kind::Integer},
    {"UInteger", TypeKind::Integer, NativeType::UInt64, Literal::Kind::Integer},
    {"Variant", TypeKind::Variant, NativeType::Pointer, Literal::Kind::Null},
};

} // namespace

const BuiltInType *FindBuiltInType(std::string_view name)
{
    const auto *const found =
        std::find_if(std::begin(kBuiltInTypes), std::end(kBuiltInTypes),
                     [&](const BuiltInType &type) { return SameName(type.name, name); });
    return found == std::end(kBuiltInTypes) ? nullptr : found;
}

Type MakeType(std::string_view name, bool array)
{
    Type type{TypeKind::Object, NativeType::Pointer, std::string(name)};
    const BuiltInType *const builtIn = FindBuiltInType(name);
    if (array) {
        type.kind = TypeKind::Array;
    } else if (builtIn != nullptr) {
        type.kind = builtIn->kind;
        type.native = builtIn->native;
    }
    return type;
}

Literal EmptyValue(const Type &type)
{
    const BuiltInType *const builtIn = FindBuiltInType(type.name);
    Literal literal;
    if (builtIn != nullptr && type.kind != TypeKind::Array)
        literal.kind = builtIn->empty;
    return literal;
}

} // namespace qzlhost

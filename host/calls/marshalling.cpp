// Values as native arguments and results, and back.
#include "host/calls/marshalling.h"

#include <cmath>

#include "host/values/accounts.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

/// A Currency value travels as a whole number of ten-thousandths.
constexpr double kCurrencyScale = 10000;

NativeValue NativePointer(void *pointer)
{
    NativeValue native{};
    native.pointer = pointer;
    return native;
}

NativeValue NativeInteger(int64_t integer)
{
    NativeValue native{};
    native.integer = integer;
    return native;
}

/// The value's native form, borrowed from `kept`.
NativeValue ToNative(const Type &type, const Value &value, std::vector<Value> &kept)
{
    NativeValue native{};
    switch (type.kind) {
    case TypeKind::Nothing:
        return native;
    case TypeKind::Boolean:
        return NativeInteger(value.AsBoolean() ? 1 : 0);
    case TypeKind::Integer:
    case TypeKind::Color:
        return NativeInteger(value.AsInteger());
    case TypeKind::Currency:
        return NativeInteger(std::llround(value.AsDouble() * kCurrencyScale));
    case TypeKind::Single:
        native.single = static_cast<float>(value.AsDouble());
        return native;
    case TypeKind::Double:
        native.number = value.AsDouble();
        return native;
    case TypeKind::String:
        kept.push_back(value.TextPointer() ? Value(value.AsString()) : value);
        return NativePointer(kept.back().StringPointer());
    case TypeKind::Text:
        kept.push_back(value.TextPointer() ? value : Value::TextOf(value.AsString()));
        return NativePointer(kept.back().TextPointer());
    case TypeKind::Variant:
        kept.push_back(value.Boxed());
        return NativePointer(kept.back().ObjectPointer());
    case TypeKind::Object:
    case TypeKind::Array:
        kept.push_back(value);
        return NativePointer(kept.back().ObjectPointer());
    case TypeKind::Pointer:
        return NativeInteger(value.AsInteger());
    }
    return native;
}

/// The thing at the pointer. Records a mistake and returns null if it is not alive or of another kind.
template <typename T>
T *Checked(Kind kind, void *pointer)
{
    const Accounts &accounts = *Current<Accounts>();
    if (pointer && accounts.Find(kind, pointer) != Accounts::Standing::Alive) {
        RecordMistake("the library handed over a pointer that is not alive or of a wrong kind: " +
                      accounts.NameOf(pointer));
        return nullptr;
    }
    return static_cast<T *>(pointer);
}

template <typename T>
Value FromPointer(Kind kind, void *pointer, bool shared)
{
    T *const thing = Checked<T>(kind, pointer);
    return shared ? Value::Share(thing) : Value::Adopt(thing);
}

Value FromNative(const Type &type, NativeValue native, bool shared)
{
    switch (type.kind) {
    case TypeKind::Nothing:
        return Value();
    case TypeKind::Boolean:
        return Value(native.integer != 0);
    case TypeKind::Integer:
        return Value(native.integer);
    case TypeKind::Color:
        return Value::OfCode(code::Color, Value(native.integer));
    case TypeKind::Currency:
        return Value::OfCode(code::Currency, Value(static_cast<double>(native.integer) / kCurrencyScale));
    case TypeKind::Single:
        return Value(native.single);
    case TypeKind::Double:
        return Value(native.number);
    case TypeKind::String:
        return FromPointer<String>(Kind::String, native.pointer, shared);
    case TypeKind::Text:
        return FromPointer<Text>(Kind::Text, native.pointer, shared);
    case TypeKind::Variant:
    case TypeKind::Object:
    case TypeKind::Array:
        return FromPointer<Instance>(Kind::Instance, native.pointer, shared);
    case TypeKind::Pointer:
        return Value(native.integer);
    }
    return Value();
}

} // namespace

NativeArguments::NativeArguments(const Declaration &declaration, Instance *self,
                                 const std::vector<Value> &arguments)
{
    if (self) {
        types_.push_back(NativeType::Pointer);
        values_.push_back(NativePointer(self));
    }
    for (size_t i = 0; i < declaration.parameters.size(); ++i) {
        const Parameter &parameter = declaration.parameters[i];
        Add(parameter.type,
            i < arguments.size() ? arguments[i] : ValueOf(parameter.defaultValue.value_or(Literal())));
    }
}

void NativeArguments::Add(const Type &type, const Value &value)
{
    types_.push_back(type.native);
    values_.push_back(ToNative(type, value, kept_));
}

void NativeArguments::AddInteger(int64_t integer)
{
    types_.push_back(NativeType::Int64);
    values_.push_back(NativeInteger(integer));
}

NativeValue NativeArguments::Call(void *function, NativeType result) const
{
    return CallNative(function, {result, types_}, values_.data());
}

Value FromNativeResult(const Type &type, NativeValue native)
{
    return FromNative(type, native, false);
}

Value FromNativeArgument(const Type &type, NativeValue native)
{
    return FromNative(type, native, true);
}

NativeValue ToNativeResult(const Type &type, const Value &value)
{
    std::vector<Value> kept;
    const NativeValue native = ToNative(type, value, kept);
    if (type.native == NativeType::Pointer && type.kind != TypeKind::Pointer && native.pointer)
        static_cast<Counted *>(native.pointer)->counts.AddReference();
    return native;
}

Value ValueOf(const Literal &literal)
{
    switch (literal.kind) {
    case Literal::Kind::Null:
        return Value();
    case Literal::Kind::Boolean:
        return Value(literal.boolean);
    case Literal::Kind::Integer:
        return Value(literal.integer);
    case Literal::Kind::Number:
        return Value(literal.number);
    case Literal::Kind::String:
        return Value(literal.string);
    }
    return Value();
}

} // namespace qzlhost

// Members of a class and its superclasses: found by name, by declaration, by arguments.
#include "host/calls/members.h"

#include <optional>

#include "host/calls/class_registry.h"
#include "host/calls/errors.h"
#include "host/language/names.h"

namespace qzlhost {

namespace {

constexpr int kExact = 0;
constexpr int kWidened = 1;
constexpr int kConverted = 2;
/// Worse than any sum of widened arguments.
constexpr int kVariant = 100;
constexpr int kNoFit = -1;

bool IsWhole(int64_t code)
{
    return code == code::Int32 || code == code::Int64;
}

bool IsString(const Value &value)
{
    return value.StringPointer() || (value.Code() == code::String && !value.TextPointer());
}

bool IsInRange(int64_t integer, NativeType type)
{
    return Narrowed(type, NativeValue{integer}).integer == integer;
}

int MisfitOfInteger(const Value &value, const Type &type)
{
    if (!IsWhole(value.Code()) || !IsInRange(value.AsInteger(), type.native))
        return kNoFit;
    return type.native == NativeType::Int64 ? kExact : kWidened;
}

int MisfitOfNumber(const Value &value, int64_t ownCode)
{
    const int64_t code = value.Code();
    if (code == ownCode)
        return kExact;
    if (code == code::Single || code == code::Double || code == code::Currency)
        return kWidened;
    return IsWhole(code) ? kConverted : kNoFit;
}

int MisfitOfObject(const Value &value, const Type &type)
{
    if (value.IsNil())
        return kExact;
    const Instance *const instance = value.ObjectPointer();
    if (!instance)
        return kNoFit;
    if (SameName(instance->type->name, type.name))
        return kExact;
    const bool fits =
        SameName(type.name, "Object") || Current<ClassRegistry>()->IsA(*instance->type, type.name);
    return fits ? kWidened : kNoFit;
}

int MisfitOfArray(const Value &value)
{
    return value.IsNil() || value.Code() >= code::Array ? kExact : kNoFit;
}

/// How badly all arguments fit; nothing if one does not.
std::optional<int> MisfitOfAll(const Declaration &declaration, const std::vector<Value> &arguments)
{
    if (arguments.size() < declaration.RequiredArguments() ||
        arguments.size() > declaration.parameters.size())
        return std::nullopt;
    int sum = 0;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const Parameter &parameter = declaration.parameters[i];
        const int misfit = parameter.byReference ? kNoFit : Misfit(arguments[i], parameter.type);
        if (misfit == kNoFit)
            return std::nullopt;
        sum += misfit;
    }
    return sum;
}

std::string Listed(const std::vector<Overload> &overloads)
{
    std::string list;
    for (const Overload &overload : overloads)
        list += "\n  " + overload.type->name + ": " + overload.method->declaration.ToString();
    return list;
}

struct Match {
    const Overload *overload = nullptr;
    int misfit = 0;
    /// Parameters that are left to their defaults.
    size_t defaults = 0;

    bool IsBetterThan(const Match &other) const
    {
        return misfit != other.misfit ? misfit < other.misfit : defaults < other.defaults;
    }
};

} // namespace

const Property *FindProperty(const Class &type, std::string_view name)
{
    const ClassRegistry &classes = *Current<ClassRegistry>();
    std::vector<const Class *> chain = classes.Chain(type);
    chain.push_back(classes.Find("Variant"));
    for (const Class *each : chain) {
        for (const Property &property : each->properties)
            if (SameName(property.name, name))
                return &property;
    }
    return nullptr;
}

const NativeMethod *FindMethod(const Class &type, const Declaration &declaration)
{
    for (const Class *each : Current<ClassRegistry>()->Chain(type)) {
        for (const NativeMethod &method : each->methods)
            if (SameSignature(method.declaration, declaration))
                return &method;
    }
    return nullptr;
}

std::vector<Overload> FindOverloads(const Class &type, std::string_view name, bool shared)
{
    std::vector<Overload> overloads;
    for (const Class *each : Current<ClassRegistry>()->Chain(type)) {
        for (const NativeMethod &method : shared ? each->sharedMethods : each->methods)
            if (SameName(method.declaration.name, name))
                overloads.push_back({each, &method});
    }
    return overloads;
}

int Misfit(const Value &value, const Type &type)
{
    switch (type.kind) {
    case TypeKind::Nothing:
        return kNoFit;
    case TypeKind::Boolean:
        return value.Code() == code::Boolean ? kExact : kNoFit;
    case TypeKind::Integer:
        return MisfitOfInteger(value, type);
    case TypeKind::Single:
        return MisfitOfNumber(value, code::Single);
    case TypeKind::Double:
        return MisfitOfNumber(value, code::Double);
    case TypeKind::Currency:
        return MisfitOfNumber(value, code::Currency);
    case TypeKind::Color:
        return value.Code() == code::Color ? kExact : MisfitOfInteger(value, type);
    case TypeKind::String:
        return IsString(value) ? kExact : value.Code() == code::Text ? kWidened : kNoFit;
    case TypeKind::Text:
        return value.Code() == code::Text ? kExact : IsString(value) ? kWidened : kNoFit;
    case TypeKind::Variant:
        return kVariant;
    case TypeKind::Object:
        return MisfitOfObject(value, type);
    case TypeKind::Array:
        return MisfitOfArray(value);
    case TypeKind::Pointer:
        return MisfitOfInteger(value, type) == kNoFit ? kNoFit : kWidened;
    }
    return kNoFit;
}

const NativeMethod &ChooseOverload(const std::vector<Overload> &overloads,
                                   const std::vector<Value> &arguments, const std::string &what)
{
    const NativeMethod *const method = FindFittingOverload(overloads, arguments, what);
    if (!method) {
        throw UsageError(what + (overloads.empty()
                                     ? " does not exist"
                                     : " does not take these arguments; there are" + Listed(overloads)));
    }
    return *method;
}

const NativeMethod *FindFittingOverload(const std::vector<Overload> &overloads,
                                        const std::vector<Value> &arguments, const std::string &what)
{
    Match best;
    bool ambiguous = false;
    for (const Overload &overload : overloads) {
        const Declaration &declaration = overload.method->declaration;
        const std::optional<int> misfit = MisfitOfAll(declaration, arguments);
        if (!misfit)
            continue;
        const Match match{&overload, *misfit, declaration.parameters.size() - arguments.size()};
        if (!best.overload || match.IsBetterThan(best)) {
            best = match;
            ambiguous = false;
        } else if (!best.IsBetterThan(match) && best.overload->type == overload.type) {
            ambiguous = true;
        }
    }
    if (ambiguous)
        throw UsageError(what + " is ambiguous with these arguments; there are" + Listed(overloads));
    return best.overload ? best.overload->method : nullptr;
}

} // namespace qzlhost

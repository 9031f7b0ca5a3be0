// The host language's declarations of members, printed as one normal form and compared.
#include <algorithm>
#include <charconv>
#include <iterator>

#include "host/language/declaration.h"
#include "host/language/declared_types.h"
#include "host/language/names.h"

namespace qzlhost {

namespace {

std::string ToText(double number)
{
    char buffer[32];
    const std::to_chars_result end = std::to_chars(std::begin(buffer), std::end(buffer), number);
    std::string text(buffer, end.ptr);
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string ToText(const Literal &literal)
{
    switch (literal.kind) {
    case Literal::Kind::Null:
        return "Nil";
    case Literal::Kind::Boolean:
        return literal.boolean ? "True" : "False";
    case Literal::Kind::Integer:
        return std::to_string(literal.integer);
    case Literal::Kind::Number:
        return ToText(literal.number);
    case Literal::Kind::String:
        break;
    }
    std::string text = "\"";
    for (const char c : literal.string)
        text.append(c == '"' ? 2 : 1, c);
    return text + '"';
}

/// The usual spelling of a built-in type; a class's name as written.
std::string TypeName(const Type &type)
{
    const BuiltInType *const builtIn = FindBuiltInType(type.name);
    return builtIn != nullptr ? std::string(builtIn->name) : type.name;
}

std::string ToText(const Type &type)
{
    return TypeName(type) + (type.kind == TypeKind::Array ? "()" : "");
}

std::string ToText(const Parameter &parameter)
{
    std::string text = parameter.assigns ? "Assigns " : "";
    text += parameter.byReference ? "ByRef " : "";
    text += parameter.name;
    text += parameter.type.kind == TypeKind::Array ? "()" : "";
    text += " As " + TypeName(parameter.type);
    if (parameter.defaultValue)
        text += " = " + ToText(*parameter.defaultValue);
    return text;
}

bool SameType(const Type &a, const Type &b)
{
    return a.kind == b.kind && SameName(a.name, b.name);
}

bool SameParameter(const Parameter &a, const Parameter &b)
{
    return a.assigns == b.assigns && a.byReference == b.byReference && SameType(a.type, b.type);
}

} // namespace

size_t Declaration::RequiredArguments() const
{
    const auto last = std::find_if(parameters.rbegin(), parameters.rend(),
                                   [](const Parameter &parameter) { return !parameter.defaultValue; });
    return static_cast<size_t>(std::distance(last, parameters.rend()));
}

std::string Declaration::ToString() const
{
    std::string text = name;
    if (!computedProperty) {
        text += '(';
        for (size_t i = 0; i < parameters.size(); ++i)
            text += (i == 0 ? "" : ", ") + ToText(parameters[i]);
        text += ')';
    }
    return result.kind == TypeKind::Nothing ? text : text + " As " + ToText(result);
}

bool SameSignature(const Declaration &a, const Declaration &b)
{
    return SameName(a.name, b.name) && SameType(a.result, b.result) &&
           std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(), b.parameters.end(),
                      SameParameter);
}

} // namespace qzlhost

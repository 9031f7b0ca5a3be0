// Finds and calls the functions of the library's members.
#include "tests/notifications/member_calls.h"

#include <stdexcept>

#include "host/calls/marshalling.h"

using qzlhost::ClassRecord;
using qzlhost::Declaration;
using qzlhost::Host;
using qzlhost::MethodRecord;
using qzlhost::NativeArguments;
using qzlhost::NativeType;
using qzlhost::NativeValue;
using qzlhost::PropertyRecord;
using qzlhost::TypeKind;
using qzlhost::Value;
using Kind = MemberFunction::Kind;

namespace {

void AddHook(std::vector<MemberFunction> &members, const ClassRecord &type, const char *name, void *hook)
{
    if (hook != nullptr)
        members.push_back({type.name, name, Kind::Hook, hook, std::nullopt});
}

/// The declaration of a function with one parameter of the type.
Declaration Taking(const qzlhost::Type &type)
{
    Declaration declaration;
    declaration.parameters.push_back({"value", type, std::nullopt});
    return declaration;
}

void AddProperty(std::vector<MemberFunction> &members, const ClassRecord &type, const PropertyRecord &record)
{
    if (record.getter != nullptr && record.getter != qzlhost::kFieldAccess) {
        Declaration declaration;
        declaration.result = record.type;
        members.push_back(
            {type.name, record.name, Kind::Getter, record.getter, record.parameter, declaration});
    }
    if (record.setter != nullptr && record.setter != qzlhost::kFieldAccess)
        members.push_back({type.name, record.name + " =", Kind::Setter, record.setter, record.parameter,
                           Taking(record.type)});
}

void AddMethod(std::vector<MemberFunction> &members, const ClassRecord &type, const MethodRecord &record,
               Kind kind)
{
    members.push_back({type.name, record.text, kind, record.function, std::nullopt, record.declaration});
    if (record.setter != nullptr)
        members.push_back({type.name, record.text + " =", Kind::Setter, record.setter, std::nullopt,
                           Taking(record.declaration.result)});
}

/// The native arguments: the instance, the property's parameter, and the rest in order.
NativeArguments ArgumentsOf(const MemberFunction &member, const Value &self,
                            const std::vector<Value> &arguments)
{
    qzlhost::Instance *const instance = member.kind == Kind::SharedMethod ? nullptr : self.ObjectPointer();
    if (!member.parameter)
        return {member.declaration, instance, arguments};
    NativeArguments native({}, instance, {});
    native.AddInteger(*member.parameter);
    for (size_t i = 0; i < arguments.size(); ++i)
        native.Add(member.declaration.parameters.at(i).type, arguments[i]);
    return native;
}

} // namespace

std::vector<Value> MemberFunction::PlainArguments() const
{
    std::vector<Value> arguments;
    for (const qzlhost::Parameter &declared : declaration.parameters) {
        switch (declared.type.kind) {
        case TypeKind::String:
            arguments.emplace_back("AName");
            break;
        case TypeKind::Integer:
            arguments.emplace_back(int64_t{0});
            break;
        case TypeKind::Boolean:
            arguments.emplace_back(false);
            break;
        default:
            arguments.emplace_back();
        }
    }
    return arguments;
}

std::vector<MemberFunction> MemberFunctions(const Host &host)
{
    std::vector<MemberFunction> members;
    for (const ClassRecord &type : host.RegisteredClasses()) {
        AddHook(members, type, "constructor hook", type.constructor);
        AddHook(members, type, "destructor hook", type.destructor);
        for (const PropertyRecord &record : type.properties)
            AddProperty(members, type, record);
        for (const MethodRecord &record : type.methods)
            AddMethod(members, type, record, Kind::Method);
        for (const MethodRecord &record : type.sharedMethods)
            AddMethod(members, type, record, Kind::SharedMethod);
    }
    return members;
}

MemberFunction FindMember(const Host &host, const std::string &key)
{
    for (const MemberFunction &member : MemberFunctions(host))
        if (member.Key() == key)
            return member;
    throw std::out_of_range("the library has no " + key);
}

MemberAnswer CallMember(const MemberFunction &member, const Value &self, const std::vector<Value> &arguments)
{
    const NativeArguments native = ArgumentsOf(member, self, arguments);
    const NativeType result = member.declaration.result.native;
    try {
        const NativeValue value = native.Call(member.function, result);
        if (result == NativeType::Nothing)
            return {};
        return {value.integer, qzlhost::FromNativeResult(member.declaration.result, value), false};
    } catch (...) {
        return {0, Value(), true};
    }
}

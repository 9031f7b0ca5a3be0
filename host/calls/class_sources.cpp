// Classes from the records of a library, from the host's tables, and from programs.
#include "host/calls/class_sources.h"

#include <algorithm>

#include "host/calls/class_registry.h"
#include "host/calls/errors.h"
#include "host/calls/program_calls.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

Property ComputedProperty(const Declaration &declaration, void *getter, void *setter)
{
    return {declaration.name, declaration.result, getter, setter, 0, true};
}

std::function<void(Instance *)> HookOf(void *function)
{
    if (!function)
        return nullptr;
    return [function](Instance *instance) { CallProcedure(function, instance); };
}

void AddMembers(Class &type, const ClassRecord &record)
{
    for (const PropertyRecord &property : record.properties) {
        type.properties.push_back(
            {property.name, property.type, property.getter, property.setter, property.parameter});
    }
    for (const MethodRecord &method : record.methods)
        if (method.declaration.computedProperty)
            type.properties.push_back(ComputedProperty(method.declaration, method.function, method.setter));
        else if (method.function)
            type.methods.push_back({method.declaration, method.function});
    for (const MethodRecord &method : record.sharedMethods)
        if (method.function)
            type.sharedMethods.push_back({method.declaration, method.function});
    for (const EventRecord &event : record.events) {
        if (event.keySlot) {
            type.events.push_back({event.declaration, Current<ClassRegistry>()->eventKeys.Assign(
                                                          event.keySlot, record.version)});
        }
    }
    for (const ConstantRecord &constant : record.constants)
        type.constants.push_back(constant.declaration);
}

Declaration ParsedMember(const std::string &className, const std::string &text)
{
    try {
        return ParseDeclaration(text);
    } catch (const DeclarationError &error) {
        throw UsageError(className + ": " + error.what());
    }
}

void *AddCallback(Class &type, const Declaration &declaration, ProgramBody body)
{
    type.callbacks.push_back(MakeCallback(declaration, std::move(body)));
    return type.callbacks.back()->Function();
}

/// A program's computed property: its body is called without arguments to read it, and with the new value to
/// write it.
void AddComputedProperty(Class &type, const Declaration &declaration, const ProgramBody &body)
{
    Declaration setter = declaration;
    setter.result = {};
    setter.parameters = {Parameter{"value", declaration.result, std::nullopt}};
    void *const get = AddCallback(type, declaration, body);
    void *const set = AddCallback(type, setter, body);
    type.properties.push_back(ComputedProperty(declaration, get, set));
}

/// Whether a superclass has the event, or may have it because a superclass is not known yet.
bool MayHaveEvent(const Class &type, const Declaration &declaration)
{
    const std::vector<const Class *> chain = Current<ClassRegistry>()->Chain(type);
    if (!chain.back()->superName.empty())
        return true;
    return std::any_of(chain.begin(), chain.end(), [&](const Class *each) {
        return std::any_of(each->events.begin(), each->events.end(), [&](const EventDeclaration &event) {
            return SameSignature(event.declaration, declaration);
        });
    });
}

} // namespace

void RegisterLibraryClass(void *address)
{
    ClassRegistry &classes = *Current<ClassRegistry>();
    ClassRecord record = ReadClassRecord(address);
    for (const std::string &fault : record.faults)
        RecordMistake("bad class record: " + fault);
    if (record.version < kOldestRecordVersion || record.version > kNewestRecordVersion) {
        RecordMistake("bad class record: " + record.name + ": the version is " +
                      std::to_string(record.version));
    }
    auto type = std::make_unique<Class>();
    type->name = record.name;
    type->superName = record.superName;
    type->dataSize = record.dataSize;
    type->constructor = HookOf(record.constructor);
    type->destructor = HookOf(record.destructor);
    AddMembers(*type, record);
    if (record.name.empty() || !classes.Add(std::move(type))) {
        RecordMistake("a class named " + (record.name.empty() ? "nothing" : record.name) +
                      " cannot be registered" + (record.name.empty() ? "" : " again"));
    }
    classes.records.push_back(std::move(record));
}

std::unique_ptr<Class> MakeBuiltInClass(const BuiltInClass &table)
{
    auto type = std::make_unique<Class>();
    type->name = table.name;
    type->superName = table.super ? table.super : "";
    type->makePayload = table.makePayload;
    for (const BuiltInProperty &property : table.properties) {
        type->properties.push_back(
            {property.name, ParseType(property.type), property.getter, property.setter, property.parameter});
    }
    for (const BuiltInMethod &method : table.methods)
        type->methods.push_back({ParseDeclaration(method.declaration), method.function});
    return type;
}

std::unique_ptr<Class> MakeProgramClass(ClassDefinition definition)
{
    auto type = std::make_unique<Class>();
    type->name = definition.name;
    type->superName = definition.super;
    type->dataSize = definition.dataSize;
    type->constructor = std::move(definition.constructor);
    type->destructor = std::move(definition.destructor);
    for (Method &method : definition.methods) {
        const Declaration declaration = ParsedMember(type->name, method.declaration);
        if (declaration.computedProperty)
            AddComputedProperty(*type, declaration, method.body);
        else
            type->methods.push_back({declaration, AddCallback(*type, declaration, std::move(method.body))});
    }
    for (Method &event : definition.events) {
        const Declaration declaration = ParsedMember(type->name, event.declaration);
        if (!MayHaveEvent(*type, declaration))
            throw UsageError("no superclass of " + type->name + " has the event " + declaration.ToString());
        type->handlers.push_back({declaration, AddCallback(*type, declaration, std::move(event.body))});
    }
    return type;
}

} // namespace qzlhost

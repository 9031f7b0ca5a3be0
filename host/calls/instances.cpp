// Makes and destroys instances as their classes say.
#include "host/calls/instances.h"

#include "host/calls/class_registry.h"
#include "host/calls/cocoa.h"
#include "host/calls/errors.h"
#include "host/language/names.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

/// The size of the instance data, which one class of the chain declares.
uint64_t DataSize(const std::vector<const Class *> &chain)
{
    const Class *declaring = nullptr;
    for (const Class *type : chain) {
        if (type->dataSize == 0)
            continue;
        if (declaring) {
            RecordMistake("both " + declaring->name + " and its superclass " + type->name +
                          " declare instance data");
            return std::max(declaring->dataSize, type->dataSize);
        }
        declaring = type;
    }
    return declaring ? declaring->dataSize : 0;
}

std::unique_ptr<Payload> MakePayload(const std::vector<const Class *> &chain)
{
    for (const Class *type : chain)
        if (type->makePayload)
            return type->makePayload();
    return nullptr;
}

void RunDestructors(Instance *instance)
{
    const CocoaScope cocoa;
    const std::vector<const Class *> chain = Current<ClassRegistry>()->Chain(*instance->type);
    for (const Class *type : chain) {
        for (const NativeMethod &method : type->methods)
            if (SameName(method.declaration.name, "Destructor") && method.declaration.parameters.empty())
                CallProcedure(method.function, instance);
    }
    for (const Class *type : chain)
        if (type->destructor)
            type->destructor(instance);
}

} // namespace

void SetClassHooks()
{
    gClassHooks.name = [](const Class &type) -> const std::string & { return type.name; };
    gClassHooks.newBuiltIn = [](const char *className, std::unique_ptr<Payload> payload) {
        return NewInstance(*Current<ClassRegistry>()->Find(className), std::move(payload));
    };
    gClassHooks.runDestructors = RunDestructors;
}

Instance *NewInstance(const Class &type, std::unique_ptr<Payload> payload)
{
    const std::vector<const Class *> chain = Current<ClassRegistry>()->Chain(type);
    const Class &topmost = *chain.back();
    if (!topmost.superName.empty())
        RecordMistake("the superclass " + topmost.superName + " of " + topmost.name + " is not known");
    if (!payload)
        payload = MakePayload(chain);
    Instance *const instance = AllocateInstance(type, DataSize(chain), std::move(payload));
    for (auto each = chain.rbegin(); each != chain.rend(); ++each)
        if ((*each)->constructor)
            (*each)->constructor(instance);
    return instance;
}

Instance &InstanceOf(const Value &value)
{
    if (!value.ObjectPointer())
        throw UsageError("a value of code " + std::to_string(value.Code()) + " is not an object");
    return *value.ObjectPointer();
}

} // namespace qzlhost

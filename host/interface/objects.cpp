// Entry points: registration, instances, events, exceptions and methods by declaration.
#include "host/calls/class_registry.h"
#include "host/calls/class_sources.h"
#include "host/calls/exceptions.h"
#include "host/calls/instances.h"
#include "host/calls/members.h"
#include "host/interface/builtin_classes.h"
#include "host/interface/entry_functions.h"
#include "host/interface/session.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

/// Records a mistake and returns nothing for a malformed declaration.
std::optional<Declaration> Parsed(const char *text)
{
    try {
        return ParseDeclaration(text);
    } catch (const DeclarationError &error) {
        RecordMistake(error.what());
        return std::nullopt;
    }
}

} // namespace

double Version()
{
    return Current<Session>()->version.value_or(0);
}

void RegisterVersion(int32_t version)
{
    if (version < kOldestRecordVersion || version > kNewestRecordVersion)
        RecordMistake("the class-record version " + std::to_string(version) + " is not known");
    Current<Session>()->declaredVersion = version;
}

void RegisterClass(NotNull<RecordBytes> record)
{
    RegisterLibraryClass(record.pointer);
}

Instance *PluginNewInstance(NotNull<const char> name)
{
    const Class *const type = Current<ClassRegistry>()->Find(name.pointer);
    return type ? NewInstance(*type) : nullptr;
}

void LockObject(Instance *object)
{
    Lock(object);
}

void UnlockObject(Instance *object)
{
    Unlock(object);
}

bool ObjectIsA(Instance *object, const ClassReference *reference)
{
    return object && reference && Current<ClassRegistry>()->IsA(*object->type, reference->name);
}

const ClassReference *ObjectType(NotNull<const char> name)
{
    const Class *const type = Current<ClassRegistry>()->Find(name.pointer);
    return type ? type->reference : nullptr;
}

void *EventInstance(NotNull<Instance> object, void *key)
{
    const ClassRegistry &classes = *Current<ClassRegistry>();
    const ClassRegistry::Event event = classes.FindEvent(reinterpret_cast<uint64_t>(key));
    if (!event.type || !classes.IsA(*object->type, event.type->name))
        return nullptr;
    for (const Class *type : classes.Chain(*object->type)) {
        for (const NativeMethod &handler : type->handlers)
            if (SameSignature(handler.declaration, *event.declaration))
                return handler.function;
    }
    return nullptr;
}

void RaiseException(NotNull<Instance> exception)
{
    RecordException(Held<Instance>::Share(exception.pointer));
}

Instance *CallWithExceptionHandler(NotNull<void(void *)> function, void *argument)
{
    const ExceptionScope outer;
    function.pointer(argument);
    return TakeException().HandOver();
}

void *LoadGlobalMethod(void *, NotNull<const char> declaration)
{
    const std::optional<Declaration> parsed = Parsed(declaration.pointer);
    return parsed ? Current<Session>()->faults.AnswerMethod(*parsed, FindGlobalMethod(*parsed)) : nullptr;
}

void *LoadObjectMethod(Instance *object, NotNull<const char> declaration)
{
    const std::optional<Declaration> parsed = Parsed(declaration.pointer);
    if (!object || !parsed)
        return nullptr;
    const NativeMethod *const method = FindMethod(*object->type, *parsed);
    return Current<Session>()->faults.AnswerMethod(*parsed, method ? method->function : nullptr);
}

} // namespace qzlhost

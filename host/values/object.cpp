// Instances of the host's classes: a header of 48 bytes, then the instance data.
#include "host/values/object.h"

#include <cstdlib>
#include <new>

#include "host/calls/class.h"
#include "host/calls/program_calls.h"
#include "host/runtime.h"
#include "host/values/boxes.h"

namespace qzlhost {

namespace {

/// Whether the host that made the instance is the one that lives now.
bool HasLivingHost(const Instance *instance)
{
    const Runtime *const runtime = Runtime::Current();
    return runtime && runtime->number == instance->host;
}

/// The instance data of the one class in the chain that declares any.
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
    const std::vector<const Class *> chain = Runtime::Current()->classes.Chain(*instance->type);
    for (const Class *type : chain) {
        for (const NativeMethod &method : type->methods)
            if (SameName(method.declaration.name, "Destructor") && method.declaration.parameters.empty())
                CallNativeProcedure(method.function, instance);
    }
    for (const Class *type : chain)
        if (type->destructor)
            type->destructor(instance);
}

} // namespace

Instance *NewInstance(const Class &type)
{
    return NewInstance(type, nullptr);
}

Instance *NewInstance(const Class &type, std::unique_ptr<Payload> payload)
{
    Runtime &runtime = *Runtime::Current();
    const std::vector<const Class *> chain = runtime.classes.Chain(type);
    const Class &topmost = *chain.back();
    if (!topmost.superName.empty())
        RecordMistake("the superclass " + topmost.superName + " of " + topmost.name + " is not known");
    const uint64_t dataSize = DataSize(chain);
    void *const memory = std::calloc(1, kHeaderSize + dataSize);
    if (!memory)
        throw std::bad_alloc();
    Instance *const instance = new (memory) Instance;
    instance->type = &type;
    instance->payload = (payload ? std::move(payload) : MakePayload(chain)).release();
    instance->dataSize = dataSize;
    instance->host = runtime.number;
    runtime.accounts.Enter(Kind::Instance, instance);
    for (auto each = chain.rbegin(); each != chain.rend(); ++each)
        if ((*each)->constructor)
            (*each)->constructor(instance);
    return instance;
}

int64_t CodeOf(const Instance *instance)
{
    if (!instance)
        return code::Null;
    return instance->payload ? instance->payload->Code() : code::Object;
}

std::string Describe(const Instance *instance)
{
    if (!instance)
        return "Nil";
    std::string text = (HasLivingHost(instance) ? instance->type->name : std::string("an instance")) + " #" +
                       std::to_string(instance->serial);
    if (const Box *const box = PayloadOf<Box>(instance))
        text += " of " + std::to_string(box->Code()) + ": " + box->AsString();
    return text;
}

void FreeInstance(Instance *instance)
{
    if (HasLivingHost(instance) && Runtime::Current()->accounts.Open())
        Runtime::Current()->accounts.Remove(instance, Describe(instance));
    delete std::exchange(instance->payload, nullptr);
    instance->~Instance();
    std::free(instance);
}

void Destroy(Instance *thing)
{
    // References that come and go while the destructors run do not end the instance again.
    if (thing->dying.exchange(true))
        return;
    if (HasLivingHost(thing)) {
        RunDestructors(thing);
        if (thing->counts.References() != 0)
            RecordMistake(Describe(thing) + " was kept while its destructors ran");
    }
    FreeInstance(thing);
}

} // namespace qzlhost

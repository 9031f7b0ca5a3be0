// Instances of the host's classes: a header of 48 bytes, then the instance data.
#include "host/values/object.h"

#include <cstdlib>
#include <new>

#include "host/values/accounts.h"

namespace qzlhost {

Instance *AllocateInstance(const Class &type, uint64_t dataSize, std::unique_ptr<Payload> payload)
{
    void *const memory = std::calloc(1, kHeaderSize + dataSize);
    if (!memory)
        throw std::bad_alloc();
    Instance *const instance = new (memory) Instance;
    instance->type = &type;
    instance->payload = payload.release();
    instance->dataSize = dataSize;
    Current<Accounts>()->Enter(Kind::Instance, instance);
    return instance;
}

void FreeInstance(Instance *instance)
{
    if (Accounts *const accounts = Accounts::Of(instance))
        accounts->Remove(instance);
    delete std::exchange(instance->payload, nullptr);
    instance->~Instance();
    std::free(instance);
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
    const std::string className = Accounts::Of(instance) ? gClassHooks.name(*instance->type) : "an instance";
    return className + " #" + std::to_string(instance->serial) +
           (instance->payload ? instance->payload->Detail() : std::string());
}

void Destroy(Instance *thing)
{
    // A destructor may take and release references, which must not destroy the instance again.
    if (thing->dying.exchange(true))
        return;
    if (Accounts::Of(thing)) {
        gClassHooks.runDestructors(thing);
        if (thing->counts.References() != 0)
            RecordMistake(Describe(thing) + " was kept while its destructors ran");
    }
    FreeInstance(thing);
}

} // namespace qzlhost

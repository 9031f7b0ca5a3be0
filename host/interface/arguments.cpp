// The arguments of host functions: which ones are acceptable, and how they read in the trace.
#include "host/interface/arguments.h"

#include "host/calls/class_registry.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

bool CheckAlive(Kind kind, const void *pointer)
{
    if (!pointer)
        return true;
    const Accounts &accounts = *Current<Accounts>();
    switch (accounts.Find(kind, pointer)) {
    case Accounts::Standing::Alive:
        return true;
    case Accounts::Standing::Dead:
        RecordMistake(accounts.NameOf(pointer) + " is dead");
        return false;
    case Accounts::Standing::Foreign:
        RecordMistake("the pointer " + accounts.NameOf(pointer) + " is not the host's");
        return false;
    case Accounts::Standing::OtherKind:
        RecordMistake("the pointer " + accounts.NameOf(pointer) + " is of a wrong kind");
        return false;
    }
    return false;
}

template <typename T>
std::string ShownThing(Kind kind, const T *thing)
{
    const Accounts &accounts = *Current<Accounts>();
    if (!thing || accounts.Find(kind, thing) == Accounts::Standing::Alive)
        return Describe(thing);
    return "not alive: " + accounts.NameOf(thing);
}

} // namespace

bool IsAlive(const Instance *instance)
{
    return CheckAlive(Kind::Instance, instance);
}

bool IsAlive(const String *string)
{
    return CheckAlive(Kind::String, string);
}

bool IsAlive(const Text *text)
{
    return CheckAlive(Kind::Text, text);
}

bool IsAlive(const ClassReference *reference)
{
    const bool good = !reference || IsClassReference(reference);
    if (!good)
        RecordMistake("a pointer that is not a class reference");
    return good;
}

bool RefuseNull()
{
    RecordMistake("null where none is allowed");
    return false;
}

bool RefuseOtherPayload(const Instance *instance)
{
    RecordMistake(Describe(instance) + " is of a wrong class");
    return false;
}

std::string Shown(const Instance *instance)
{
    return ShownThing(Kind::Instance, instance);
}

std::string Shown(const String *string)
{
    return ShownThing(Kind::String, string);
}

std::string Shown(const Text *text)
{
    return ShownThing(Kind::Text, text);
}

std::string Shown(const ClassReference *reference)
{
    return IsClassReference(reference) ? reference->name : Shown(static_cast<const void *>(reference));
}

std::string Shown(const char *name)
{
    return name ? '"' + std::string(name) + '"' : "null";
}

std::string Shown(const void *pointer)
{
    return pointer ? AddressText(pointer) : "null";
}

} // namespace qzlhost

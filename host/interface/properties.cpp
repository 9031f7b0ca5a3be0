// Entry points: properties by name.
#include <algorithm>
#include <initializer_list>

#include "host/calls/errors.h"
#include "host/calls/exceptions.h"
#include "host/calls/members.h"
#include "host/calls/program_calls.h"
#include "host/interface/entry_functions.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

/// Null if there is no such property or it is of another kind.
const Property *PropertyOf(const Instance *object, const char *name, std::initializer_list<TypeKind> kinds)
{
    const Property *const property = FindProperty(*object->type, name);
    const bool fits = property && std::find(kinds.begin(), kinds.end(), property->type.kind) != kinds.end();
    return fits ? property : nullptr;
}

/// Runs an access and returns whether it succeeded. Records what the accessor raises.
template <typename Access>
bool Try(Access access)
{
    const ExceptionScope outer;
    try {
        access();
        return true;
    } catch (const ProgramException &exception) {
        RecordException(Held<Instance>::Share(exception.Exception().ObjectPointer()));
    } catch (const UsageError &error) {
        RecordMistake(error.what());
    }
    return false;
}

/// Passes the property's value to `use`; false if it cannot be read.
template <typename Use>
bool Read(NotNull<Instance> object, NotNull<const char> name, std::initializer_list<TypeKind> kinds, Use use)
{
    const Property *const property = PropertyOf(object.pointer, name.pointer, kinds);
    return property && property->getter && Try([&] { use(ReadProperty(*property, object.pointer)); });
}

bool Write(NotNull<Instance> object, NotNull<const char> name, TypeKind kind, const Value &value)
{
    const Property *const property = PropertyOf(object.pointer, name.pointer, {kind});
    return property && property->setter && Try([&] { WriteProperty(*property, object.pointer, value); });
}

} // namespace

bool GetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, NotNull<int64_t> out)
{
    return Read(object, name, {TypeKind::Integer}, [&](const Value &value) { *out = value.AsInteger(); });
}

bool GetPropertyDouble(NotNull<Instance> object, NotNull<const char> name, NotNull<double> out)
{
    return Read(object, name, {TypeKind::Double}, [&](const Value &value) { *out = value.AsDouble(); });
}

bool GetPropertySingle(NotNull<Instance> object, NotNull<const char> name, NotNull<float> out)
{
    return Read(object, name, {TypeKind::Single},
                [&](const Value &value) { *out = static_cast<float>(value.AsDouble()); });
}

bool GetPropertyString(NotNull<Instance> object, NotNull<const char> name, NotNull<String *> out)
{
    return Read(object, name, {TypeKind::String},
                [&](const Value &value) { *out = Lock(value.StringPointer()); });
}

bool GetPropertyObject(NotNull<Instance> object, NotNull<const char> name, NotNull<Instance *> out)
{
    return Read(object, name, {TypeKind::Object, TypeKind::Variant, TypeKind::Array},
                [&](const Value &value) { *out = Lock(value.ObjectPointer()); });
}

bool SetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, int64_t value)
{
    return Write(object, name, TypeKind::Integer, Value(value));
}

bool SetPropertyString(NotNull<Instance> object, NotNull<const char> name, String *value)
{
    return Write(object, name, TypeKind::String, Value::Share(value));
}

} // namespace qzlhost

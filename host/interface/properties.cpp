// Entry points: properties by name.
#include <algorithm>
#include <initializer_list>
#include <optional>

#include "host/calls/errors.h"
#include "host/calls/exceptions.h"
#include "host/calls/members.h"
#include "host/calls/program_calls.h"
#include "host/interface/entry_functions.h"
#include "host/values/accounts.h"

namespace qzlhost {

namespace {

/// Null where there is no such property or it is of none of these kinds.
const Property *PropertyOf(const Instance *object, const char *name, std::initializer_list<TypeKind> kinds)
{
    const Property *const property = FindProperty(*object->type, name);
    const bool fits = property && std::find(kinds.begin(), kinds.end(), property->type.kind) != kinds.end();
    return fits ? property : nullptr;
}

/// Runs an access and returns whether it went well; what its accessor raises is recorded.
template <class Access>
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

/// Nothing where the property cannot be read.
std::optional<Value> Read(const Property *property, Instance *object)
{
    Value value;
    const bool read = property && property->getter && Try([&] { value = ReadProperty(*property, object); });
    return read ? std::optional(value) : std::nullopt;
}

bool Write(const Property *property, Instance *object, const Value &value)
{
    return property && property->setter && Try([&] { WriteProperty(*property, object, value); });
}

} // namespace

bool GetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, NotNull<int64_t> out)
{
    const auto value = Read(PropertyOf(object.pointer, name.pointer, {TypeKind::Integer}), object.pointer);
    if (value)
        *out = value->AsInteger();
    return value.has_value();
}

bool GetPropertyDouble(NotNull<Instance> object, NotNull<const char> name, NotNull<double> out)
{
    const auto value = Read(PropertyOf(object.pointer, name.pointer, {TypeKind::Double}), object.pointer);
    if (value)
        *out = value->AsDouble();
    return value.has_value();
}

bool GetPropertySingle(NotNull<Instance> object, NotNull<const char> name, NotNull<float> out)
{
    const auto value = Read(PropertyOf(object.pointer, name.pointer, {TypeKind::Single}), object.pointer);
    if (value)
        *out = static_cast<float>(value->AsDouble());
    return value.has_value();
}

bool GetPropertyString(NotNull<Instance> object, NotNull<const char> name, NotNull<String *> out)
{
    const auto value = Read(PropertyOf(object.pointer, name.pointer, {TypeKind::String}), object.pointer);
    if (value)
        *out = Lock(value->StringPointer());
    return value.has_value();
}

bool GetPropertyObject(NotNull<Instance> object, NotNull<const char> name, NotNull<Instance *> out)
{
    const auto value =
        Read(PropertyOf(object.pointer, name.pointer, {TypeKind::Object, TypeKind::Variant, TypeKind::Array}),
             object.pointer);
    if (value)
        *out = Lock(value->ObjectPointer());
    return value.has_value();
}

bool SetPropertyInteger(NotNull<Instance> object, NotNull<const char> name, int64_t value)
{
    return Write(PropertyOf(object.pointer, name.pointer, {TypeKind::Integer}), object.pointer, Value(value));
}

bool SetPropertyString(NotNull<Instance> object, NotNull<const char> name, String *value)
{
    return Write(PropertyOf(object.pointer, name.pointer, {TypeKind::String}), object.pointer,
                 Value::Share(value));
}

} // namespace qzlhost

// Properties that the host reads and writes itself, as fields of the instance data.
#include "host/calls/fields.h"

#include <cstring>

#include "host/calls/errors.h"
#include "host/calls/marshalling.h"

namespace qzlhost {

namespace {

char *FieldAddress(const Property &property, Instance *self, size_t width)
{
    const auto offset = static_cast<uint64_t>(property.parameter);
    if (property.parameter < 0 || offset + width > self->dataSize)
        throw UsageError("the property " + property.name + " lies outside the instance data");
    return static_cast<char *>(DataOf(self)) + offset;
}

bool IsReference(const Type &type)
{
    return type.native == NativeType::Pointer && type.kind != TypeKind::Pointer;
}

} // namespace

Value ReadField(const Property &property, Instance *self)
{
    const size_t width = WidthOf(property.type.native);
    NativeValue native{};
    std::memcpy(&native, FieldAddress(property, self, width), width);
    return FromNativeArgument(property.type, Narrowed(property.type.native, native));
}

void WriteField(const Property &property, Instance *self, const Value &value)
{
    if (IsReference(property.type))
        throw UsageError("the property " + property.name + " holds a reference");
    const size_t width = WidthOf(property.type.native);
    const NativeValue native = ToNativeResult(property.type, value);
    std::memcpy(FieldAddress(property, self, width), &native, width);
}

} // namespace qzlhost

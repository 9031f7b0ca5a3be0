// Properties that the host reads and writes itself, as fields of the instance data.
#include "host/calls/fields.h"

#include <cstring>

#include "host/calls/errors.h"
#include "host/calls/marshalling.h"

namespace qzlhost {

namespace {

size_t WidthOf(NativeType type)
{
    switch (type) {
    case NativeType::Nothing:
        return 0;
    case NativeType::Boolean:
    case NativeType::Int8:
    case NativeType::UInt8:
        return 1;
    case NativeType::Int16:
    case NativeType::UInt16:
        return 2;
    case NativeType::Int32:
    case NativeType::UInt32:
    case NativeType::Single:
        return 4;
    case NativeType::Int64:
    case NativeType::UInt64:
    case NativeType::Double:
    case NativeType::Pointer:
        return 8;
    }
    return 0;
}

char *FieldAddress(const Property &property, Instance *self, size_t width)
{
    const auto offset = static_cast<uint64_t>(property.parameter);
    if (property.parameter < 0 || offset + width > self->dataSize)
        throw UsageError("the property " + property.name + " lies outside the instance data");
    return static_cast<char *>(DataOf(self)) + offset;
}

int64_t SignExtended(int64_t bits, size_t width)
{
    const unsigned shift = static_cast<unsigned>(64 - width * 8);
    return static_cast<int64_t>(static_cast<uint64_t>(bits) << shift) >> shift;
}

bool IsSigned(NativeType type)
{
    return type == NativeType::Int8 || type == NativeType::Int16 || type == NativeType::Int32;
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
    if (IsSigned(property.type.native))
        native.integer = SignExtended(native.integer, width);
    return FromNativeArgument(property.type, native);
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

// Variants: the members of their class, and entry points.
#include "host/interface/builtin_classes.h"
#include "host/interface/entry_functions.h"
#include "host/interface/thunk.h"
#include "host/values/boxes.h"

namespace qzlhost {

namespace {

int64_t TypeOf(NotNull<Instance> self, int64_t)
{
    return CodeOf(self.pointer);
}

String *StringValue(NotNull<Instance> self, int64_t)
{
    return StringOfVariant(self.pointer);
}

int64_t IntegerValue(NotNull<Instance> self, int64_t)
{
    return Value::Share(self.pointer).AsInteger();
}

double DoubleValue(NotNull<Instance> self, int64_t)
{
    return Value::Share(self.pointer).AsDouble();
}

float SingleValue(NotNull<Instance> self, int64_t)
{
    return static_cast<float>(DoubleValue(self, 0));
}

bool BooleanValue(NotNull<Instance> self, int64_t)
{
    return Value::Share(self.pointer).AsBoolean();
}

Instance *DateValue(NotNull<Instance> self, int64_t)
{
    return CodeOf(self.pointer) == code::Date ? Lock(self.pointer) : nullptr;
}

} // namespace

BuiltInClass VariantClass()
{
    return {"Variant",
            nullptr,
            nullptr,
            {
                {"Type", "Integer", Native<&TypeOf>("Variant.Type")},
                {"StringValue", "String", Native<&StringValue>("Variant.StringValue")},
                {"IntegerValue", "Integer", Native<&IntegerValue>("Variant.IntegerValue")},
                {"LongValue", "Int64", Native<&IntegerValue, 1>("Variant.LongValue")},
                {"DoubleValue", "Double", Native<&DoubleValue>("Variant.DoubleValue")},
                {"SingleValue", "Single", Native<&SingleValue>("Variant.SingleValue")},
                {"BooleanValue", "Boolean", Native<&BooleanValue>("Variant.BooleanValue")},
                {"DateValue", "Date", Native<&DateValue>("Variant.DateValue")},
            }};
}

Instance *StringToVariant(String *string)
{
    return NewVariant(Value::Share(string));
}

Instance *IntegerToVariant(int64_t integer)
{
    return NewVariant(Value(integer));
}

Instance *UInt32ToVariant(uint32_t integer)
{
    return NewVariant(Value(integer));
}

Instance *DoubleToVariant(double number)
{
    return NewVariant(Value(number));
}

Instance *SingleToVariant(float number)
{
    return NewVariant(Value(number));
}

Instance *BooleanToVariant(bool boolean)
{
    return NewVariant(Value(boolean));
}

Instance *TextToVariant(Text *text)
{
    return NewVariant(Value::Share(text));
}

String *VariantToString(Instance *variant)
{
    return StringOfVariant(variant);
}

int64_t VariantToInt64(Instance *variant)
{
    return Value::Share(variant).AsInteger();
}

double VariantToDouble(Instance *variant)
{
    return Value::Share(variant).AsDouble();
}

float VariantToSingle(Instance *variant)
{
    return static_cast<float>(Value::Share(variant).AsDouble());
}

} // namespace qzlhost

// Entry points: variants.
#include "host/values/variants.h"
#include "host/interface/entry_functions.h"
#include "host/values/boxes.h"

namespace qzlhost {

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

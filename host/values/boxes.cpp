// Variants that box a number, a string, a boolean or a text.
#include "host/values/boxes.h"

#include "host/interface/thunk.h"
#include "host/runtime.h"
#include "host/values/strings.h"
#include "host/values/variants.h"

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

Instance *NewVariant(const Value &value)
{
    if (Instance *const instance = value.ObjectPointer())
        return Lock(instance);
    if (value.IsNil())
        return nullptr;
    return NewInstance(*Runtime::Current()->classes.Find("Variant"), std::make_unique<Box>(value));
}

String *StringOfVariant(Instance *variant)
{
    const Value value = Value::Share(variant);
    if (String *const string = value.StringPointer())
        return Lock(string);
    const std::string text = value.AsString();
    return text.empty() ? nullptr : NewString(text, encoding::UTF8);
}

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

} // namespace qzlhost

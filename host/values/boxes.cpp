// Variants that box a number, a string, a boolean or a text.
#include "host/values/boxes.h"

#include "host/values/strings.h"

namespace qzlhost {

Instance *NewVariant(const Value &value)
{
    if (Instance *const instance = value.ObjectPointer())
        return Lock(instance);
    if (value.IsNil())
        return nullptr;
    return NewBuiltIn("Variant", std::make_unique<Box>(value));
}

String *StringOfVariant(Instance *variant)
{
    const Value value = Value::Share(variant);
    if (String *const string = value.StringPointer())
        return Lock(string);
    const std::string text = value.AsString();
    return text.empty() ? nullptr : NewString(text, encoding::UTF8);
}

} // namespace qzlhost

// Dictionaries: the members of their class.
#include "host/interface/builtin_classes.h"
#include "host/interface/exceptions.h"
#include "host/interface/thunk.h"
#include "host/values/boxes.h"
#include "host/values/dictionary.h"

namespace qzlhost {

namespace {

Instance *GetValue(Of<Dictionary> self, Instance *key)
{
    const std::optional<Value> value = self->Find(Value::Share(key));
    return value ? NewVariant(*value) : nullptr;
}

void SetValue(Of<Dictionary> self, Instance *key, Instance *value)
{
    self->Set(Value::Share(key), Value::Share(value));
}

Instance *GetKey(Of<Dictionary> self, int64_t index)
{
    const std::optional<Value> key = self->KeyAt(index);
    if (!key) {
        RaiseHostException("OutOfBoundsException", "The Dictionary has no key at this index.");
        return nullptr;
    }
    return NewVariant(*key);
}

bool HasKey(Of<Dictionary> self, Instance *key)
{
    return self->Find(Value::Share(key)).has_value();
}

void RemoveKey(Of<Dictionary> self, Instance *key)
{
    self->Remove(Value::Share(key));
}

void RemoveAll(Of<Dictionary> self)
{
    self->Clear();
}

int64_t Count(Of<Dictionary> self, int64_t)
{
    return self->Count();
}

} // namespace

BuiltInClass DictionaryClass()
{
    return {"Dictionary",
            nullptr,
            &MakePayloadOf<Dictionary>,
            {
                {"Count", "Integer", Native<&Count>("Dictionary.Count")},
            },
            {
                {"Value(key As Variant, Assigns _value As Variant)", Native<&SetValue>("Dictionary.Value=")},
                {"Value(key As Variant) As Variant", Native<&GetValue>("Dictionary.Value")},
                {"Key(index As Integer) As Variant", Native<&GetKey>("Dictionary.Key")},
                {"HasKey(key As Variant) As Boolean", Native<&HasKey>("Dictionary.HasKey")},
                {"Remove(key As Variant)", Native<&RemoveKey>("Dictionary.Remove")},
                {"Clear()", Native<&RemoveAll>("Dictionary.Clear")},
            }};
}

} // namespace qzlhost

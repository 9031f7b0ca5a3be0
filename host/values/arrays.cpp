// Host arrays.
#include "host/values/arrays.h"

#include <algorithm>

#include "host/values/boxes.h"
#include "host/values/strings.h"

namespace qzlhost {

namespace {

int64_t ToElement(const Value &value, int64_t *)
{
    return value.AsInteger();
}

double ToElement(const Value &value, double *)
{
    return value.AsDouble();
}

float ToElement(const Value &value, float *)
{
    return static_cast<float>(value.AsDouble());
}

bool ToElement(const Value &value, bool *)
{
    return value.AsBoolean();
}

Held<String> ToElement(const Value &value, Held<String> *)
{
    return Held<String>::Share((value.TextPointer() ? Value(value.AsString()) : value).StringPointer());
}

Held<Text> ToElement(const Value &value, Held<Text> *)
{
    return Held<Text>::Share((value.TextPointer() ? value : Value::TextOf(value.AsString())).TextPointer());
}

Held<Instance> ToElement(const Value &value, Held<Instance> *)
{
    return Held<Instance>::Adopt(NewVariant(value));
}

template <typename T>
Value FromElement(T element)
{
    return Value(element);
}

template <typename T>
Value FromElement(const Held<T> &element)
{
    return Value::Share(element.Get());
}

template <typename T>
std::unique_ptr<ArrayPayload> MakeArray(int64_t elementCode, int64_t count)
{
    return std::make_unique<ArrayOf<T>>(elementCode, count);
}

struct ElementRow {
    int64_t code;
    std::unique_ptr<ArrayPayload> (*make)(int64_t elementCode, int64_t count);
};

/// One storage for each element code.
constexpr ElementRow kElements[] = {
    {code::Null, &MakeArray<Held<Instance>>},   {code::Int32, &MakeArray<int64_t>},
    {code::Int64, &MakeArray<int64_t>},         {code::Single, &MakeArray<float>},
    {code::Double, &MakeArray<double>},         {code::Currency, &MakeArray<double>},
    {code::Date, &MakeArray<Held<Instance>>},   {code::String, &MakeArray<Held<String>>},
    {code::Object, &MakeArray<Held<Instance>>}, {code::Boolean, &MakeArray<bool>},
    {code::Color, &MakeArray<int64_t>},         {code::Text, &MakeArray<Held<Text>>},
};

} // namespace

template <typename T>
int64_t ArrayOf<T>::Count() const
{
    std::lock_guard lock(mutex_);
    return static_cast<int64_t>(elements_.size());
}

template <typename T>
bool ArrayOf<T>::Read(int64_t index, Value &out) const
{
    T element{};
    if (!Copy(index, element))
        return false;
    out = FromElement(element);
    if (!out.IsNil() && !out.ObjectPointer())
        out = Value::OfCode(elementCode, out);
    return true;
}

template <typename T>
bool ArrayOf<T>::Write(int64_t index, const Value &value)
{
    T element = ToElement(value, static_cast<T *>(nullptr));
    std::lock_guard lock(mutex_);
    const bool inside = IsInside(index, elements_.size());
    if (inside)
        std::swap(elements_[static_cast<size_t>(index)], element);
    return inside;
}

template <typename T>
void ArrayOf<T>::Resize(int64_t count)
{
    // Destroyed after the lock is released.
    std::deque<T> dropped;
    std::lock_guard lock(mutex_);
    while (static_cast<int64_t>(elements_.size()) > count) {
        dropped.push_back(std::move(elements_.back()));
        elements_.pop_back();
    }
    elements_.resize(static_cast<size_t>(count));
}

Instance *NewArrayOf(int64_t elementCode, int64_t count)
{
    const auto *const row = std::find_if(std::begin(kElements), std::end(kElements),
                                         [&](const ElementRow &each) { return each.code == elementCode; });
    return row == std::end(kElements) ? nullptr : NewBuiltIn("Array", row->make(elementCode, count));
}

} // namespace qzlhost

// Host arrays.
#include "host/values/arrays.h"

#include <algorithm>

#include "host/interface/entry_functions.h"
#include "host/runtime.h"
#include "host/values/boxes.h"
#include "host/values/encodings.h"
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

template <class T>
Value FromElement(T element)
{
    return Value(element);
}

template <class T>
Value FromElement(const Held<T> &element)
{
    return Value::Share(element.Get());
}

/// What a reader hands to the library.
template <class T>
T ForLibrary(T element)
{
    return element;
}

template <class T>
T *ForLibrary(const Held<T> &element)
{
    return Lock(element.Get());
}

template <class T>
class ArrayOf : public ArrayPayload {
public:
    using Given = decltype(ForLibrary(std::declval<T>()));

    ArrayOf(int64_t elementType, int64_t count)
        : ArrayPayload(elementType), elements_(static_cast<size_t>(count))
    {
    }

    int64_t Count() const override
    {
        std::lock_guard lock(mutex_);
        return static_cast<int64_t>(elements_.size());
    }

    bool Read(int64_t index, Value &out) const override
    {
        T element{};
        if (!Copy(index, element))
            return false;
        out = FromElement(element);
        if (!out.IsNil() && !out.ObjectPointer())
            out = Value::OfCode(elementCode, out);
        return true;
    }

    bool Write(int64_t index, const Value &value) override
    {
        T element = ToElement(value, static_cast<T *>(nullptr));
        std::lock_guard lock(mutex_);
        const bool inside = IsInside(index, elements_.size());
        if (inside)
            std::swap(elements_[static_cast<size_t>(index)], element);
        return inside;
    }

    void Resize(int64_t count) override
    {
        // What falls out ends when nothing is locked any more.
        std::deque<T> dropped;
        std::lock_guard lock(mutex_);
        while (static_cast<int64_t>(elements_.size()) > count) {
            dropped.push_back(std::move(elements_.back()));
            elements_.pop_back();
        }
        elements_.resize(static_cast<size_t>(count));
    }

    /// One reference for the library; empty, with a mistake recorded, outside the array.
    Given Give(int64_t index) const
    {
        T element{};
        if (!Copy(index, element))
            RecordMistake("the index " + std::to_string(index) + " is outside the array");
        return ForLibrary(element);
    }

    void Insert(int64_t index, T element)
    {
        std::lock_guard lock(mutex_);
        if (!IsInside(index, elements_.size() + 1)) {
            RecordMistake("the index " + std::to_string(index) + " is outside the array");
            return;
        }
        elements_.insert(elements_.begin() + static_cast<std::ptrdiff_t>(index), std::move(element));
    }

private:
    static bool IsInside(int64_t index, size_t count)
    {
        return index >= 0 && static_cast<uint64_t>(index) < count;
    }

    bool Copy(int64_t index, T &out) const
    {
        std::lock_guard lock(mutex_);
        const bool inside = IsInside(index, elements_.size());
        if (inside)
            out = elements_[static_cast<size_t>(index)];
        return inside;
    }

    mutable std::mutex mutex_;
    std::deque<T> elements_;
};

template <class T>
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

template <class T>
typename ArrayOf<T>::Given ReadElement(Of<ArrayOf<T>> array, int64_t index)
{
    return array->Give(index);
}

void InsertElement(Of<ArrayOf<Held<Instance>>> array, int64_t index, Instance *value)
{
    array->Insert(index, Held<Instance>::Share(value));
}

/// `procedure` for an array of one of these element codes; otherwise null, and a mistake.
void *ProcedureFor(Of<ArrayPayload> array, std::initializer_list<int64_t> codes, void *procedure)
{
    if (std::find(codes.begin(), codes.end(), array->elementCode) != codes.end())
        return procedure;
    RecordMistake("an array of code " + std::to_string(array->Code()) + " has other elements");
    return nullptr;
}

/// The element type of an object array where arrays are made; it is no type code.
constexpr int64_t kObjectElements = 4;

} // namespace

Instance *NewArrayOf(int64_t elementCode, int64_t count)
{
    const auto *const row = std::find_if(std::begin(kElements), std::end(kElements),
                                         [&](const ElementRow &each) { return each.code == elementCode; });
    if (row == std::end(kElements))
        return nullptr;
    return NewInstance(*Runtime::Current()->classes.Find("Array"), row->make(elementCode, count));
}

BuiltInClass ArrayClass()
{
    return {"Array"};
}

Instance *CreateArray(int64_t elementType, int64_t upperBound)
{
    const int64_t elementCode = elementType == kObjectElements ? code::Object : elementType;
    Instance *const array = upperBound < -1 ? nullptr : NewArrayOf(elementCode, upperBound + 1);
    if (!array) {
        RecordMistake("no array has the element type " + std::to_string(elementType) +
                      " and the upper bound " + std::to_string(upperBound));
    }
    return array;
}

int64_t UBound(Of<ArrayPayload> array)
{
    return array->Count() - 1;
}

void *ObjectArrayInsertProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Object, code::Date, code::Null},
                        Native<&InsertElement>("insert an object"));
}

void *IntegerArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Int32, code::Color}, Native<&ReadElement<int64_t>>("read an integer"));
}

void *Int64ArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Int64}, Native<&ReadElement<int64_t>, 1>("read an int64"));
}

void *BooleanArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Boolean}, Native<&ReadElement<bool>>("read a boolean"));
}

void *SingleArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Single}, Native<&ReadElement<float>>("read a single"));
}

void *DoubleArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Double}, Native<&ReadElement<double>>("read a double"));
}

void *StringArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::String}, Native<&ReadElement<Held<String>>>("read a string"));
}

void *TextArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Text}, Native<&ReadElement<Held<Text>>>("read a text"));
}

void *ObjectArrayGetProc(Of<ArrayPayload> array)
{
    return ProcedureFor(array, {code::Object, code::Date, code::Null},
                        Native<&ReadElement<Held<Instance>>>("read an object"));
}

} // namespace qzlhost

// Entry points: arrays.
#include "host/values/arrays.h"

#include <algorithm>

#include "host/interface/entry_functions.h"
#include "host/interface/thunk.h"

namespace qzlhost {

namespace {

/// The element, with one reference for the library.
template <typename T>
T Given(T element)
{
    return element;
}

template <typename T>
T *Given(const Held<T> &element)
{
    return Lock(element.Get());
}

template <typename T>
auto ReadElement(Of<ArrayOf<T>> array, int64_t index) -> decltype(Given(std::declval<T>()))
{
    return Given(array->Get(index));
}

void InsertElement(Of<ArrayOf<Held<Instance>>> array, int64_t index, Instance *value)
{
    array->Insert(index, Held<Instance>::Share(value));
}

/// Returns `procedure` for an array of one of these element codes; otherwise records a mistake and returns
/// null.
void *ProcedureFor(Of<ArrayPayload> array, std::initializer_list<int64_t> codes, void *procedure)
{
    if (std::find(codes.begin(), codes.end(), array->elementCode) != codes.end())
        return procedure;
    RecordMistake("an array of code " + std::to_string(array->Code()) + " has other elements");
    return nullptr;
}

/// The element type that makes an array of objects; it is not a type code.
constexpr int64_t kObjectElements = 4;

} // namespace

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

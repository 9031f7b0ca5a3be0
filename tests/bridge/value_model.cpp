// The worth of host values, and the rules of a trip to Cocoa and back.
#include "tests/bridge/value_model.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

constexpr int64_t kObjectArray = code::Array + code::Object;

/// Every digit of a number; with the sign of zero and of what is no number.
std::string DigitsOf(double number)
{
    char digits[64];
    std::snprintf(digits, sizeof digits, "%a", number);
    return digits;
}

bool IsNumber(int64_t code)
{
    return code == code::Single || code == code::Double || code == code::Currency;
}

Model ModelOfArray(Host &host, const Value &array)
{
    Model model;
    model.code = array.Code();
    for (int64_t index = 0; index < host.ArrayCount(array); ++index)
        model.elements.push_back(ModelOf(host, host.ArrayElement(array, index)));
    return model;
}

Model ModelOfDictionary(Host &host, const Value &dictionary)
{
    Model model;
    model.code = code::Object;
    model.className = "Dictionary";
    for (int64_t index = 0; index < host.DictionaryCount(dictionary); ++index) {
        const Value key = host.DictionaryKey(dictionary, index);
        model.entries.push_back({ModelOf(host, key), ModelOf(host, host.DictionaryGet(dictionary, key))});
    }
    std::sort(model.entries.begin(), model.entries.end());
    return model;
}

Model ModelOfObject(Host &host, const Value &object)
{
    Model model;
    model.code = code::Object;
    model.className = host.ClassOf(object);
    if (model.className == "Dictionary")
        return ModelOfDictionary(host, object);
    if (model.className == "MemoryBlock")
        model.content = host.MemoryBlockBytes(object);
    else if (model.className == "FolderItem")
        model.content = host.FolderItemPath(object);
    return model;
}

/// The objects that are nothing in Cocoa, and so come back as Nil.
bool IsLost(const Model &model)
{
    if (model.code != code::Object)
        return false;
    // Empty data and empty blocks are nothing to each other.
    const bool isEmptyBlock = model.className == "MemoryBlock" && model.content.empty();
    // Only the family could wrap an object of a program's own.
    const bool isForeign = model.className == "ProgramObject";
    return isEmptyBlock || isForeign;
}

/// A string's text ends at its first NUL on the way back.
std::string UpToNUL(const std::string &text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace

const std::vector<CodeRule> kCodeRules = {
    {code::Null, code::Null, "nothing stays nothing"},
    {code::Int32, code::Int64, "Cocoa's integers come back with 64 bits, however wide they were"},
    {code::Int64, code::Int64, "the same"},
    {code::Color, code::Int64, "Cocoa has no colour among its numbers"},
    {code::Single, code::Single, "Cocoa keeps the width of a number with a fraction"},
    {code::Double, code::Double, "the same"},
    {code::Currency, code::Double, "Cocoa has no currency: it is read as a Double"},
    {code::Boolean, code::Boolean, "Cocoa's booleans are told by their identity"},
    {code::Date, code::Date, "a date's fields are wall-clock time on both sides"},
    {code::String, code::String, "text stays text; the empty string becomes the null string"},
    {18, code::String, "every kind of string becomes a string"},
    {19, code::String, "the same"},
    {20, code::String, "the same"},
    {21, code::String, "the same"},
    {23, code::String, "the same"},
    {code::Text, code::String, "a text becomes a string"},
    {code::Object, code::Object, "Dictionaries, blocks and folder items stay what they are"},
    {code::Array + code::Int32, kObjectArray, "Cocoa's arrays hold objects: typed arrays lose their type"},
    {code::Array + code::Int64, kObjectArray, "the same"},
    {code::Array + code::Single, kObjectArray, "the same"},
    {code::Array + code::Double, kObjectArray, "the same"},
    {code::Array + code::Date, kObjectArray, "the same"},
    {code::Array + code::String, kObjectArray, "the same"},
    {code::Array + code::Boolean, kObjectArray, "the same"},
    {code::Array + code::Text, kObjectArray, "the same"},
    {kObjectArray, kObjectArray, "an array of objects stays one"},
    {code::Array + code::Currency, code::Null, "arrays of currencies are not converted, though scalars are"},
    {code::Array + code::Color, code::Null, "arrays of colours are not converted, though scalars are"},
};

std::ostream &operator<<(std::ostream &stream, const Model &model)
{
    stream << model.code << ' ' << model.className << '"' << model.content << '"';
    for (const Model &element : model.elements)
        stream << " [" << element << ']';
    for (const auto &[key, value] : model.entries)
        stream << " {" << key << ": " << value << '}';
    return stream;
}

Model ModelOf(Host &host, const Value &value)
{
    if (value.Code() == code::Object)
        return ModelOfObject(host, value);
    if (value.Code() >= code::Array)
        return ModelOfArray(host, value);
    Model model;
    model.code = value.Code();
    model.content = IsNumber(value.Code()) ? DigitsOf(value.AsDouble()) : value.AsString();
    return model;
}

Model AfterTrip(const Model &before)
{
    Model after;
    const auto rule = std::find_if(std::begin(kCodeRules), std::end(kCodeRules),
                                   [&](const CodeRule &row) { return row.before == before.code; });
    if (rule == std::end(kCodeRules) || rule->after == code::Null || IsLost(before))
        return after;
    after.code = rule->after;
    after.className = before.className;
    after.content = rule->after == code::String ? UpToNUL(before.content) : before.content;
    for (const Model &element : before.elements)
        after.elements.push_back(AfterTrip(element));
    for (const auto &[key, value] : before.entries)
        // Cocoa's dictionaries have no place for a Nil key; a Nil value is NSNull there, and Nil again.
        if (key.code != code::Null)
            after.entries.push_back({AfterTrip(key), AfterTrip(value)});
    std::sort(after.entries.begin(), after.entries.end());
    return after;
}

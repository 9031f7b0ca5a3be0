// Models of host values: their types and content as JSON, and what Cocoa makes of them.
#include "tests/support/value_model.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

constexpr int64_t kObjectArray = code::Array + code::Object;

const std::string &NameOf(const Json &model)
{
    return model.begin().key();
}

const Json &ContentOf(const Json &model)
{
    return model.begin().value();
}

/// The row of a type; null for objects, and for Nil's model.
template <typename Matches>
const ValueType *FindType(Matches matches)
{
    const auto found = std::find_if(kValueTypes.begin(), kValueTypes.end(), matches);
    return found == kValueTypes.end() ? nullptr : &*found;
}

const ValueType *TypeOf(const Json &model)
{
    return model.is_null() ? nullptr
                           : FindType([&](const ValueType &type) { return type.name == NameOf(model); });
}

Json ElementsOf(Host &host, const Value &array)
{
    Json elements = Json::array();
    for (int64_t index = 0; index < host.ArrayCount(array); ++index)
        elements.push_back(ModelOf(host, host.ArrayElement(array, index)));
    return elements;
}

Json EntriesOf(Host &host, const Value &dictionary)
{
    Json entries = Json::array();
    for (int64_t index = 0; index < host.DictionaryCount(dictionary); ++index) {
        const Value key = host.DictionaryKey(dictionary, index);
        entries.push_back(
            Json::array({ModelOf(host, key), ModelOf(host, host.DictionaryGet(dictionary, key))}));
    }
    return entries;
}

Json ModelOfInstance(Host &host, const Value &instance)
{
    if (host.IsA(instance, "Dictionary"))
        return {{"dictionary", EntriesOf(host, instance)}};
    if (host.IsA(instance, "MemoryBlock"))
        return typed::Memory(host.MemoryBlockBytes(instance));
    if (host.IsA(instance, "FolderItem"))
        return {{"folder item", host.FolderItemPath(instance)}};
    return {{"object", host.ClassOf(instance)}};
}

Json ContentOf(Host &host, const Value &value)
{
    switch (value.Code()) {
    case code::Boolean:
        return value.AsBoolean();
    case code::Int32:
    case code::Int64:
    case code::Color:
        return value.AsInteger();
    case code::Single:
    case code::Double:
    case code::Currency:
        return DigitsOf(value.AsDouble());
    default:
        return value.Code() >= code::Array ? ElementsOf(host, value) : Json(value.AsString());
    }
}

double NumberOf(const Json &digits)
{
    return std::strtod(digits.get<std::string>().c_str(), nullptr);
}

std::string BytesOf(const std::string &hexadecimal)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < hexadecimal.size(); i += 2) {
        unsigned byte = 0;
        std::from_chars(&hexadecimal[i], &hexadecimal[i] + 2, byte, 16);
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

Value DateOf(Host &host, const std::string &wallClock)
{
    std::array<int, 6> fields = {};
    if (std::sscanf(wallClock.c_str(), "%d-%d-%d %d:%d:%d", &fields[0], &fields[1], &fields[2], &fields[3],
                    &fields[4], &fields[5]) != 6)
        throw std::runtime_error("no date: " + wallClock);
    return host.NewDate(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
}

Value ArrayOf(Host &host, const Json &models)
{
    std::vector<Value> elements;
    for (const Json &model : models)
        elements.push_back(ValueOf(host, model).Boxed());
    return host.NewArray(code::Object, elements);
}

Value DictionaryOf(Host &host, const Json &entries)
{
    const Value dictionary = host.NewDictionary();
    for (const Json &entry : entries)
        host.DictionarySet(dictionary, ValueOf(host, entry.at(0)), ValueOf(host, entry.at(1)));
    return dictionary;
}

/// Whether the value has no Cocoa counterpart. An empty block has none, and only the family could wrap a
/// program's own object.
bool IsNothing(const Json &model)
{
    if (model.is_null() || model == typed::Memory("") || model == Json{{"object", "ProgramObject"}})
        return true;
    const ValueType *const type = TypeOf(model);
    return type != nullptr && type->afterTrip == nullptr;
}

/// A key as Cocoa compares it: a boolean is a number, a text a string.
Json Compared(const Json &key)
{
    if (key.is_null())
        return nullptr;
    const Json &content = ContentOf(key);
    if (NameOf(key) == "double")
        return NumberOf(content);
    return content.is_boolean() ? Json(content.get<bool>() ? 1 : 0) : content;
}

/// Replaces the value of an equal key, or else adds the entry.
void Enter(Json &entries, const Json &key, const Json &value)
{
    for (Json &entry : entries) {
        if (Compared(entry.at(0)) == Compared(key)) {
            entry.at(1) = value;
            return;
        }
    }
    entries.push_back(Json::array({key, value}));
}

/// The model after the way back from Cocoa.
Json BackFromCocoa(const Json &model)
{
    if (model.is_null())
        return nullptr;
    const ValueType *const type = TypeOf(model);
    const std::string name = type == nullptr ? NameOf(model) : type->afterTrip;
    Json content = ContentOf(model);
    if (name == "array") {
        for (Json &element : content)
            element = BackFromCocoa(element);
    } else if (name == "dictionary") {
        for (Json &entry : content)
            entry = Json::array({BackFromCocoa(entry.at(0)), BackFromCocoa(entry.at(1))});
    } else if (name == "string") {
        // The host reads a Cocoa string up to its first NUL.
        const auto text = content.get<std::string>();
        content = text.substr(0, text.find('\0'));
    }
    return {{name, content}};
}

} // namespace

const std::vector<ValueType> kValueTypes = {
    {code::Int32, "int32", "integer", "Cocoa's integers come back with 64 bits, however wide they were"},
    {code::Int64, "integer", "integer", "the same"},
    {code::Color, "colour", "integer", "Cocoa has no colour among its numbers"},
    {code::Single, "single", "single", "Cocoa keeps the width of a number with a fraction"},
    {code::Double, "double", "double", "the same"},
    {code::Currency, "currency", "double", "Cocoa has no currency: it is read as a Double"},
    {code::Boolean, "boolean", "boolean", "Cocoa's booleans are known by their identity"},
    {code::Date, "date", "date", "a date's fields are wall-clock time on both sides"},
    {code::String, "string", "string", "text stays text; the empty string becomes the null string"},
    {18, "string of code 18", "string", "every kind of string becomes a string"},
    {19, "string of code 19", "string", "the same"},
    {20, "string of code 20", "string", "the same"},
    {21, "string of code 21", "string", "the same"},
    {23, "string of code 23", "string", "the same"},
    {code::Text, "text", "string", "a text becomes a string"},
    {kObjectArray, "array", "array", "an array of objects stays one"},
    {code::Array + code::Int32, "array of int32", "array", "typed arrays become arrays of objects"},
    {code::Array + code::Int64, "array of integers", "array", "the same"},
    {code::Array + code::Single, "array of singles", "array", "the same"},
    {code::Array + code::Double, "array of doubles", "array", "the same"},
    {code::Array + code::Date, "array of dates", "array", "the same"},
    {code::Array + code::String, "array of strings", "array", "the same"},
    {code::Array + code::Boolean, "array of booleans", "array", "the same"},
    {code::Array + code::Text, "array of texts", "array", "the same"},
    {code::Array + code::Currency, "array of currencies", nullptr, "not converted, though scalars are"},
    {code::Array + code::Color, "array of colours", nullptr, "not converted, though scalars are"},
};

Json ModelOf(Host &host, const Value &value)
{
    if (value.IsNil())
        return nullptr;
    if (value.Code() == code::Object)
        return ModelOfInstance(host, value);
    const ValueType *const type = FindType([&](const ValueType &row) { return row.code == value.Code(); });
    if (type == nullptr)
        throw std::runtime_error("a value of code " + std::to_string(value.Code()));
    return {{type->name, ContentOf(host, value)}};
}

Value ValueOf(Host &host, const Json &model)
{
    if (model.is_null())
        return Value();
    const std::string &name = NameOf(model);
    const Json &content = ContentOf(model);
    if (name == "string")
        return content.get<std::string>();
    if (name == "integer")
        return content.get<int64_t>();
    if (name == "double")
        return NumberOf(content);
    if (name == "single")
        return static_cast<float>(NumberOf(content));
    if (name == "boolean")
        return content.get<bool>();
    if (name == "date")
        return DateOf(host, content.get<std::string>());
    if (name == "memory")
        return host.NewMemoryBlock(BytesOf(content.get<std::string>()));
    if (name == "array")
        return ArrayOf(host, content);
    if (name == "dictionary")
        return DictionaryOf(host, content);
    throw std::runtime_error("no builder for type " + name);
}

Json Sorted(const Json &model)
{
    if (!model.is_structured())
        return model;
    Json sorted = model;
    for (Json &part : sorted)
        part = Sorted(part);
    if (sorted.is_object() && NameOf(sorted) == "dictionary")
        std::sort(sorted.front().begin(), sorted.front().end());
    return sorted;
}

Json InCocoa(const Json &model)
{
    if (IsNothing(model))
        return nullptr;
    const ValueType *const type = TypeOf(model);
    if (type != nullptr && type->afterTrip == std::string("array")) {
        Json elements = Json::array();
        for (const Json &element : ContentOf(model))
            elements.push_back(InCocoa(element));
        return {{"array", elements}};
    }
    if (NameOf(model) != "dictionary")
        return model;
    Json entries = Json::array();
    for (const Json &entry : ContentOf(model))
        if (!entry.at(0).is_null())
            Enter(entries, InCocoa(entry.at(0)), InCocoa(entry.at(1)));
    return {{"dictionary", entries}};
}

Json AfterTrip(const Json &model)
{
    return Sorted(BackFromCocoa(InCocoa(model)));
}

std::string DigitsOf(double number)
{
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%a", number);
    return text.data();
}

std::string Hexadecimal(std::string_view bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

Json typed::Dictionary(const std::map<std::string, Json> &entries)
{
    Json pairs = Json::array();
    for (const auto &[key, value] : entries)
        pairs.push_back(Json::array({String(key), value}));
    return {{"dictionary", pairs}};
}

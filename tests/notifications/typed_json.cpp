// Host values as JSON that says the type of each, so that nothing is lost between a test and its peers.
#include "tests/notifications/typed_json.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

std::string Exact(double number)
{
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "%a", number);
    return text.data();
}

double NumberOf(const Json &content)
{
    return std::strtod(content.get<std::string>().c_str(), nullptr);
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

Value DateOf(const std::string &wallClock)
{
    std::array<int, 6> fields = {};
    if (std::sscanf(wallClock.c_str(), "%d-%d-%d %d:%d:%d", &fields[0], &fields[1], &fields[2], &fields[3],
                    &fields[4], &fields[5]) != 6)
        throw std::runtime_error("no date: " + wallClock);
    return Host::Current().NewDate(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
}

Value ArrayOf(Host &host, const Json &content)
{
    std::vector<Value> elements;
    for (const Json &element : content)
        elements.push_back(FromTypedJson(host, element).Boxed());
    return host.NewArray(code::Object, elements);
}

Value DictionaryOf(Host &host, const Json &content)
{
    const Value dictionary = host.NewDictionary();
    for (const auto &[key, value] : content.items())
        host.DictionarySet(dictionary, key, FromTypedJson(host, value));
    return dictionary;
}

Json ArrayAsJson(Host &host, const Value &array)
{
    Json elements = Json::array();
    for (int64_t index = 0; index < host.ArrayCount(array); ++index)
        elements.push_back(ToTypedJson(host, host.ArrayElement(array, index)));
    return {{"array", elements}};
}

Json DictionaryAsJson(Host &host, const Value &dictionary)
{
    Json entries = Json::object();
    for (int64_t index = 0; index < host.DictionaryCount(dictionary); ++index) {
        const Value key = host.DictionaryKey(dictionary, index);
        if (key.Code() != code::String)
            throw std::runtime_error("a key that is no string");
        entries[key.AsString()] = ToTypedJson(host, host.DictionaryGet(dictionary, key));
    }
    return {{"dictionary", entries}};
}

Json InstanceAsJson(Host &host, const Value &instance)
{
    if (host.IsA(instance, "Dictionary"))
        return DictionaryAsJson(host, instance);
    if (host.IsA(instance, "MemoryBlock"))
        return typed::Memory(host.MemoryBlockBytes(instance));
    throw std::runtime_error("an instance of " + host.ClassOf(instance));
}

} // namespace

Json ToTypedJson(Host &host, const Value &value)
{
    if (value.IsNil())
        return nullptr;
    switch (value.Code()) {
    case code::Boolean:
        return typed::Boolean(value.AsBoolean());
    case code::Int32:
    case code::Int64:
        return typed::Integer(value.AsInteger());
    case code::Single:
        return {{"single", Exact(value.AsDouble())}};
    case code::Double:
        return typed::Double(value.AsDouble());
    case code::Date:
        return typed::Date(value.AsString());
    case code::String:
        return typed::String(value.AsString());
    case code::Object:
        return InstanceAsJson(host, value);
    case code::Array + code::Object:
        return ArrayAsJson(host, value);
    default:
        throw std::runtime_error("a value of code " + std::to_string(value.Code()));
    }
}

Value FromTypedJson(Host &host, const Json &json)
{
    if (json.is_null())
        return Value();
    const std::string &type = json.begin().key();
    const Json &content = json.begin().value();
    if (type == "string")
        return content.get<std::string>();
    if (type == "integer")
        return content.get<int64_t>();
    if (type == "double")
        return NumberOf(content);
    if (type == "single")
        return static_cast<float>(NumberOf(content));
    if (type == "boolean")
        return content.get<bool>();
    if (type == "date")
        return DateOf(content.get<std::string>());
    if (type == "memory")
        return host.NewMemoryBlock(BytesOf(content.get<std::string>()));
    if (type == "array")
        return ArrayOf(host, content);
    if (type == "dictionary")
        return DictionaryOf(host, content);
    throw std::runtime_error("unknown type " + type);
}

Json typed::Double(double number)
{
    return {{"double", Exact(number)}};
}

Json typed::Single(float number)
{
    return {{"single", Exact(static_cast<double>(number))}};
}

Json typed::Memory(std::string_view bytes)
{
    return {{"memory", Hexadecimal(bytes)}};
}

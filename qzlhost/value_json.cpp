// What a program's values look like as JSON.
#include "qzlhost/value_json.h"

#include <cmath>

using qzlhost::Host;
using qzlhost::Value;
using Json = nlohmann::ordered_json;
namespace code = qzlhost::code;

namespace {

std::string Hexadecimal(const std::string &bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

Json NumberAsJson(const Value &number)
{
    const double value = number.AsDouble();
    return std::isfinite(value) ? Json(value) : Json{{"number", number.AsString()}};
}

Json DictionaryAsJson(Host &host, const Value &dictionary)
{
    Json object = Json::object();
    for (int64_t index = 0; index < host.DictionaryCount(dictionary); ++index) {
        const Value key = host.DictionaryKey(dictionary, index);
        object[key.AsString()] = ValueAsJson(host, host.DictionaryGet(dictionary, key));
    }
    return object;
}

Json ArrayAsJson(Host &host, const Value &array)
{
    Json elements = Json::array();
    for (int64_t index = 0; index < host.ArrayCount(array); ++index)
        elements.push_back(ValueAsJson(host, host.ArrayElement(array, index)));
    return elements;
}

Json InstanceAsJson(Host &host, const Value &instance)
{
    if (host.IsA(instance, "Dictionary"))
        return DictionaryAsJson(host, instance);
    if (host.IsA(instance, "MemoryBlock"))
        return {{"bytes", Hexadecimal(host.MemoryBlockBytes(instance))}};
    if (host.IsA(instance, "FolderItem"))
        return {{"path", host.FolderItemPath(instance)}};
    return {{"class", host.ClassOf(instance)}};
}

} // namespace

Json ValueAsJson(Host &host, const Value &value)
{
    if (value.IsNil())
        return nullptr;
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
        return NumberAsJson(value);
    case code::Date:
        return {{"date", value.AsString()}};
    case code::Object:
        return InstanceAsJson(host, value);
    default:
        return value.Code() >= code::Array ? ArrayAsJson(host, value) : Json(value.AsString());
    }
}

std::string LineOfJson(const Json &json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

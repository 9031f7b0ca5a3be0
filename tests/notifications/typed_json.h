// Host values as JSON that says the type of each, so that nothing is lost between a test and its peers.
#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"

using Json = nlohmann::json;

/// Nil is null; anything else an object of one entry, the type's name and the content:
///   "string"      text
///   "integer"     of 32 or 64 bits
///   "double", "single"  as printf's %a has them, which is exact
///   "boolean"
///   "date"        as in "2024-02-29 14:05:09"
///   "memory"      the bytes in hexadecimal
///   "array"       of such values
///   "dictionary"  from texts to such values
/// Throws std::runtime_error for a value of any other type.
Json ToTypedJson(qzlhost::Host &host, const qzlhost::Value &value);
/// Throws std::runtime_error for an unknown type.
qzlhost::Value FromTypedJson(qzlhost::Host &host, const Json &json);

/// Builds such JSON.
namespace typed {
inline Json String(std::string_view utf8)
{
    return {{"string", utf8}};
}
inline Json Integer(int64_t integer)
{
    return {{"integer", integer}};
}
inline Json Boolean(bool boolean)
{
    return {{"boolean", boolean}};
}
inline Json Date(std::string_view wallClock)
{
    return {{"date", wallClock}};
}
inline Json Array(const std::vector<Json> &elements)
{
    return {{"array", elements}};
}
inline Json Dictionary(const std::map<std::string, Json> &entries)
{
    return {{"dictionary", entries}};
}
Json Double(double number);
Json Single(float number);
Json Memory(std::string_view bytes);
} // namespace typed

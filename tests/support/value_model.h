// What a host value is worth, as JSON that says the type of each value, and what Cocoa makes of it.
#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"

using Json = nlohmann::json;

/// A type of scalars or arrays, with its name in a model.
struct ValueType {
    int64_t code;
    const char *name;
    /// The type that comes back from a trip to Cocoa; null where Cocoa has nothing for such a value.
    const char *afterTrip;
    const char *reason;
};

/// One row for each code that a program's values have, objects aside.
extern const std::vector<ValueType> kValueTypes;

/// Nil is null. Any other model is an object of one entry, the type's name and the content:
///   integers and booleans  as JSON has them
///   numbers                as printf's %a has them, which is exact
///   dates                  as in "2024-02-29 14:05:09"
///   strings and texts      text
///   arrays                 the models of the elements
///   "dictionary"           pairs of models, key and value, in the host's order
///   "memory"               the bytes in hexadecimal
///   "folder item"          the path
///   "object"               the class of any other instance
/// Throws std::runtime_error for a value of a type that is not in the table.
Json ModelOf(qzlhost::Host &host, const qzlhost::Value &value);

/// A value of the types for which there is a builder below. Throws std::runtime_error for any other.
qzlhost::Value ValueOf(qzlhost::Host &host, const Json &model);

/// The same model with the entries of every dictionary sorted by their keys, for comparing.
Json Sorted(const Json &model);

/// The model of what Cocoa holds: without what it has no object for, without Nil keys, and with the later of
/// two entries whose keys are equal to Cocoa. The host has no class of its own but "ProgramObject".
Json InCocoa(const Json &model);

/// The model of what comes back, sorted.
Json AfterTrip(const Json &model);

/// Every digit of a number, and the sign of zero and of what is no number.
std::string DigitsOf(double number);

std::string Hexadecimal(std::string_view bytes);

/// Builds models.
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
inline Json Double(double number)
{
    return {{"double", DigitsOf(number)}};
}
inline Json Single(float number)
{
    return {{"single", DigitsOf(static_cast<double>(number))}};
}
inline Json Memory(std::string_view bytes)
{
    return {{"memory", Hexadecimal(bytes)}};
}
inline Json Array(const std::vector<Json> &elements)
{
    return {{"array", elements}};
}
/// Sorted.
Json Dictionary(const std::map<std::string, Json> &entries);
} // namespace typed

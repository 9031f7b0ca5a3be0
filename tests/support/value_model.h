// Models of host values: their types and content as JSON, and what Cocoa makes of them.
#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.h"

using Json = nlohmann::json;

/// A type of scalars or arrays.
struct ValueType {
    int64_t code;
    /// Its name in a model.
    const char *name;
    /// The type after a trip to Cocoa and back; null for a type without a Cocoa counterpart.
    const char *afterTrip;
    const char *reason;
};

/// One row for each type code of a program's values, objects aside.
extern const std::vector<ValueType> kValueTypes;

/// Nil is null. Any other model is an object of one entry, the type's name and the content:
///   integers and booleans  JSON's own
///   numbers                as printf writes them with %a, which is exact
///   dates                  like "2024-02-29 14:05:09"
///   strings and texts      text
///   arrays                 the models of the elements
///   "dictionary"           pairs of models, key and value, in the host's order
///   "memory"               the bytes in hexadecimal
///   "folder item"          the path
///   "object"               the class of any other instance
/// Throws std::runtime_error for a value of a type that is not in the table.
Json ModelOf(qzlhost::Host &host, const qzlhost::Value &value);

/// A value of a type that has a builder below. Throws std::runtime_error for any other.
qzlhost::Value ValueOf(qzlhost::Host &host, const Json &model);

/// The same model with the entries of every dictionary sorted by key, for comparisons.
Json Sorted(const Json &model);

/// The model of the Cocoa object: null for values without a counterpart, no entries with Nil keys, and only
/// the later of two entries whose keys are equal in Cocoa. Of a program's own classes it knows
/// "ProgramObject" alone.
Json InCocoa(const Json &model);

/// The model after a trip to Cocoa and back, sorted.
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

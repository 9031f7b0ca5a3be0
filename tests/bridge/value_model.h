// What a host value is worth, and what a trip to Cocoa and back makes of it.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <tuple>
#include <vector>

#include "host/host.h"

/// What a host value is worth, apart from its identity.
struct Model {
    int64_t code = qzlhost::code::Null;
    /// The host class of an object.
    std::string className;
    /// A number, a text, bytes, a date's fields, a path.
    std::string content;
    /// Of an array.
    std::vector<Model> elements;
    /// Of a Dictionary, by their keys.
    struct Entry;
    std::vector<Entry> entries;

    bool operator==(const Model &other) const;
    bool operator<(const Model &other) const
    {
        return std::tie(code, className, content) < std::tie(other.code, other.className, other.content);
    }
};

struct Model::Entry {
    Model key;
    Model value;

    bool operator==(const Entry &other) const { return key == other.key && value == other.value; }
    bool operator<(const Entry &other) const
    {
        return std::tie(key, value) < std::tie(other.key, other.value);
    }
};

inline bool Model::operator==(const Model &other) const
{
    return code == other.code && className == other.className && content == other.content &&
           elements == other.elements && entries == other.entries;
}

/// How gtest shows one.
std::ostream &operator<<(std::ostream &stream, const Model &model);

Model ModelOf(qzlhost::Host &host, const qzlhost::Value &value);

/// What a trip makes of values with a code.
struct CodeRule {
    int64_t before;
    int64_t after;
    const char *reason;
};

/// One row for each code that a program's values have.
extern const std::vector<CodeRule> kCodeRules;

/// What comes back.
Model AfterTrip(const Model &before);

// Random trees of host values, each with a model of what Cocoa must make of it.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "host/host.h"

/// What a Cocoa object must be. Only the fields of its kind count.
struct Tree {
    enum class Kind { Null, Integer, Boolean, Single, Double, Date, Text, Data, Wrapped, Array, Dictionary };

    Kind kind = Kind::Null;
    /// Of integers and booleans.
    int64_t integer = 0;
    float single = 0;
    double number = 0;
    /// Year to second.
    std::array<int64_t, 6> date = {};
    std::u16string text;
    std::string bytes;
    /// The position of the wrapped object among the grower's wrappers.
    size_t wrapped = 0;
    std::vector<Tree> elements;
    /// No two keys are equal to Cocoa.
    struct Entry;
    std::vector<Entry> entries;
};

struct Tree::Entry {
    Tree key;
    Tree value;
};

/// A host value and its model.
struct Grown {
    qzlhost::Value value;
    Tree tree;
};

/// Grows trees; the same seed gives the same ones.
class TreeGrower {
public:
    /// `wrappers` are host objects that wrap Cocoa objects. The host needs a class "Unrelated".
    TreeGrower(qzlhost::Host &host, uint64_t seed, std::vector<qzlhost::Value> wrappers);

    /// A Dictionary that nests others and arrays, `depth` Dictionaries at most.
    Grown GrowDictionary(int depth);

    /// Every value with references that was grown.
    const std::vector<qzlhost::Value> &Values() const { return values_; }
    /// How many Dictionaries lie in each other at most.
    int Depth() const { return deepest_; }

private:
    uint64_t Pick(uint64_t count);
    bool Chance(uint64_t of);
    Grown Keep(Grown grown);

    Grown GrowValue(int depth);
    /// Nothing that is nil to Cocoa.
    Grown GrowElement(int depth);
    Grown GrowNothing();
    Grown GrowKey();
    Grown GrowScalar();
    Grown GrowArray(int depth);
    Grown GrowInteger(int64_t code);
    Grown GrowDate();
    Grown GrowString();
    Grown GrowText();
    Grown GrowData();
    Grown GrowWrapped();
    std::u32string GrowCharacters(char32_t limit);

    qzlhost::Host &host_;
    std::mt19937_64 random_;
    std::vector<qzlhost::Value> wrappers_;
    std::vector<qzlhost::Value> values_;
    int nested_ = 0;
    int deepest_ = 0;
};

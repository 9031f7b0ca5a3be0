// Random host values, nested in each other.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "host/host.h"

/// Makes values; the same seed gives the same ones. Each can be converted without an exception.
class RandomValues {
public:
    /// The host must have a class "ProgramObject". `wrappers` are host objects that wrap Cocoa objects.
    RandomValues(qzlhost::Host &host, uint64_t seed, std::vector<qzlhost::Value> wrappers = {});

    /// A value of any kind, with at most `depth` containers in each other.
    qzlhost::Value Any(int depth);
    /// A Dictionary with random entries, of the same depth.
    qzlhost::Value Dictionary(int depth);

    /// Every value made so far that has references.
    const std::vector<qzlhost::Value> &Made() const { return made_; }

private:
    uint64_t Pick(uint64_t count);
    bool Chance(uint64_t of);
    template <typename T, size_t Count>
    const T &OneOf(const T (&choices)[Count])
    {
        return choices[Pick(Count)];
    }
    qzlhost::Value Keep(qzlhost::Value value);

    /// A value that has a Cocoa counterpart, as each element of an array must.
    qzlhost::Value Something(int depth);
    /// A value without a Cocoa counterpart.
    qzlhost::Value Nothing();
    qzlhost::Value Scalar();
    qzlhost::Value Key();
    qzlhost::Value Array(int depth);
    qzlhost::Value Element(int64_t elementCode, int depth);
    int64_t Integer();
    float Single();
    double Double();
    qzlhost::Value Date();
    qzlhost::Value String();
    qzlhost::Value Text();
    qzlhost::Value Block();
    std::u32string Characters(char32_t last);

    qzlhost::Host &host_;
    std::mt19937_64 random_;
    std::vector<qzlhost::Value> wrappers_;
    std::vector<qzlhost::Value> made_;
};

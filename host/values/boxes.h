// Variants that box a number, a string, a boolean or a text.
#pragma once

#include "host/values/object.h"
#include "host/values/value.h"

namespace qzlhost {

struct Box : Payload {
    explicit Box(Value value) : content(std::move(value)) {}

    int64_t Code() const override { return content.Code(); }
    std::string AsString() const override { return content.AsString(); }
    std::string Detail() const override { return " of " + std::to_string(Code()) + ": " + AsString(); }

    const Value content;
};

/// The value as a variant, with one reference for the caller; null for Nil. An object is its own variant.
Instance *NewVariant(const Value &value);

/// The variant as a string, with one reference for the caller; null for the empty string.
String *StringOfVariant(Instance *variant);

} // namespace qzlhost

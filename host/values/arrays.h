// Host arrays.
#pragma once

#include <deque>
#include <memory>
#include <mutex>

#include "host/calls/builtin.h"
#include "host/interface/thunk.h"
#include "host/values/value.h"

namespace qzlhost {

/// Elements of one type. Any thread.
struct ArrayPayload : Payload {
    explicit ArrayPayload(int64_t code) : elementCode(code) {}

    int64_t Code() const override { return code::Array + elementCode; }

    virtual int64_t Count() const = 0;
    /// False for an index outside the array.
    virtual bool Read(int64_t index, Value &out) const = 0;
    virtual bool Write(int64_t index, const Value &element) = 0;
    virtual void Resize(int64_t count) = 0;

    const int64_t elementCode;
};

/// A new array of empty elements, with one reference; null for a code that no array has.
Instance *NewArrayOf(int64_t elementCode, int64_t count);

BuiltInClass ArrayClass();

} // namespace qzlhost

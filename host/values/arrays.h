// Host arrays.
#pragma once

#include <deque>
#include <mutex>

#include "host/values/accounts.h"
#include "host/values/object.h"
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

/// An array that stores its elements as T: a number, a boolean or a Held reference.
template <typename T>
class ArrayOf : public ArrayPayload {
public:
    ArrayOf(int64_t elementType, int64_t count)
        : ArrayPayload(elementType), elements_(static_cast<size_t>(count))
    {
    }

    int64_t Count() const override;
    bool Read(int64_t index, Value &out) const override;
    bool Write(int64_t index, const Value &element) override;
    void Resize(int64_t count) override;

    /// The element. Outside the array, records a mistake and returns an empty element.
    T Get(int64_t index) const
    {
        T element{};
        if (!Copy(index, element))
            RecordMistake("the index " + std::to_string(index) + " is outside the array");
        return element;
    }

    void Insert(int64_t index, T element)
    {
        std::lock_guard lock(mutex_);
        if (!IsInside(index, elements_.size() + 1)) {
            RecordMistake("the index " + std::to_string(index) + " is outside the array");
            return;
        }
        elements_.insert(elements_.begin() + static_cast<std::ptrdiff_t>(index), std::move(element));
    }

private:
    static bool IsInside(int64_t index, size_t count)
    {
        return index >= 0 && static_cast<uint64_t>(index) < count;
    }

    bool Copy(int64_t index, T &out) const
    {
        std::lock_guard lock(mutex_);
        const bool inside = IsInside(index, elements_.size());
        if (inside)
            out = elements_[static_cast<size_t>(index)];
        return inside;
    }

    mutable std::mutex mutex_;
    std::deque<T> elements_;
};

/// A new array of empty elements, with one reference; null for an unknown element code.
Instance *NewArrayOf(int64_t elementCode, int64_t count);

} // namespace qzlhost

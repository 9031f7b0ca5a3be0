// What codecs write to: UTF-16 units without a limit, bytes up to one.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>

namespace cocoaport {

/// UTF-16 units, on the stack while they are few.
class UnitBuffer {
public:
    /// Room for that many units; what was written before is lost.
    char16_t *Reserve(size_t capacity)
    {
        if (capacity <= kInlineCapacity)
            return units_ = inlineUnits_;
        heapUnits_.reset(new char16_t[capacity]);
        return units_ = heapUnits_.get();
    }

    void SetSize(size_t size) { size_ = size; }

    char16_t *Data() const { return units_; }
    size_t Size() const { return size_; }

private:
    static constexpr size_t kInlineCapacity = 512;

    char16_t inlineUnits_[kInlineCapacity];
    std::unique_ptr<char16_t[]> heapUnits_;
    char16_t *units_ = inlineUnits_;
    size_t size_ = 0;
};

/// Bytes written one after the other into memory of a fixed size.
class ByteWriter {
public:
    ByteWriter(char *buffer, size_t capacity) : next_(buffer), end_(buffer + capacity) {}

    char *Next() const { return next_; }
    size_t Room() const { return static_cast<size_t>(end_ - next_); }

    /// Counts bytes that the caller wrote at Next().
    void Advance(size_t count) { next_ += count; }

    /// False when the bytes do not fit.
    bool Append(const void *bytes, size_t count)
    {
        if (count > Room())
            return false;
        std::memcpy(next_, bytes, count);
        next_ += count;
        return true;
    }

private:
    char *next_;
    char *end_;
};

} // namespace cocoaport

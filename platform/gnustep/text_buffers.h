/// Where codecs write to: UTF-16 units without a limit, bytes up to one.
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
            return units = inlineUnits;
        heapUnits.reset(new char16_t[capacity]);
        return units = heapUnits.get();
    }

    void SetSize(size_t newSize) { size = newSize; }

    char16_t *Data() const { return units; }
    size_t Size() const { return size; }

private:
    static constexpr size_t kInlineCapacity = 512;

    char16_t inlineUnits[kInlineCapacity];
    std::unique_ptr<char16_t[]> heapUnits;
    char16_t *units = inlineUnits;
    size_t size = 0;
};

/// Bytes written one after the other into memory of a fixed size.
class ByteWriter {
public:
    ByteWriter(char *buffer, size_t capacity) : next(buffer), end(buffer + capacity) {}

    char *Next() const { return next; }
    size_t Room() const { return static_cast<size_t>(end - next); }

    /// Counts bytes that the caller wrote at Next().
    void Advance(size_t count) { next += count; }

    /// False when the bytes do not fit.
    bool Append(const void *bytes, size_t count)
    {
        if (count > Room())
            return false;
        std::memcpy(next, bytes, count);
        next += count;
        return true;
    }

private:
    char *next;
    char *end;
};

} // namespace cocoaport

// Reads a file's bytes; each access is checked against the file's end.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/macho/messages.h"

namespace macho {

/// A borrowed run of bytes. Reads beyond it throw LoadError, whose text begins with `what`.
class Bytes {
public:
    Bytes() = default;
    Bytes(const void *data, size_t size) : data_(static_cast<const uint8_t *>(data)), size_(size) {}

    const uint8_t *Data() const { return data_; }
    uint64_t Size() const { return size_; }

    Bytes Slice(uint64_t offset, uint64_t size, std::string_view what) const;
    /// Whether it has a byte in common with another run of the same bytes.
    bool Overlaps(Bytes other) const
    {
        return size_ != 0 && other.size_ != 0 && data_ < other.data_ + other.size_ &&
               other.data_ < data_ + size_;
    }

    template <typename T>
    T Read(uint64_t offset, std::string_view what) const
    {
        T value;
        std::memcpy(&value, Slice(offset, sizeof value, what).Data(), sizeof value);
        return value;
    }

    /// The string up to its NUL, without which it throws LoadError.
    std::string_view CString(uint64_t offset, std::string_view what) const;

private:
    const uint8_t *data_ = nullptr;
    uint64_t size_ = 0;
};

/// Reads values one after the other.
class Cursor {
public:
    Cursor(Bytes bytes, std::string_view what, uint64_t position = 0)
        : bytes_(bytes), what_(what), position_(position)
    {
    }

    bool AtEnd() const { return position_ >= bytes_.Size(); }
    uint64_t Position() const { return position_; }

    template <typename T>
    T Next()
    {
        const T value = bytes_.Read<T>(position_, what_);
        position_ += sizeof value;
        return value;
    }

    std::string_view NextCString();
    /// LEB128 numbers of at most 64 bits; wider ones throw LoadError.
    uint64_t NextUnsignedLeb();
    int64_t NextSignedLeb();

    /// Throws LoadError with the reason and the position.
    [[noreturn]] void Fail(const std::string &reason) const;

private:
    Bytes bytes_;
    std::string_view what_;
    uint64_t position_ = 0;
};

} // namespace macho

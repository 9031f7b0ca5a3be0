// The host's MemoryBlock: bytes at a fixed address.
#pragma once

#include "host/values/object.h"

namespace qzlhost {

struct MemoryBlock : Payload {
    MemoryBlock() = default;
    ~MemoryBlock() override;
    MemoryBlock(const MemoryBlock &) = delete;
    MemoryBlock &operator=(const MemoryBlock &) = delete;

    /// Replaces the bytes with zeroed ones; a large block takes no memory until it is touched. Returns false,
    /// and changes nothing, for a negative size or without enough memory.
    bool Allocate(int64_t size);

    /// Null without bytes.
    void *Pointer() const { return bytes_; }
    int64_t Size() const { return size_; }

private:
    void Free();

    void *bytes_ = nullptr;
    int64_t size_ = 0;
};

} // namespace qzlhost

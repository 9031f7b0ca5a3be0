// Bytes of any length on a few pages of memory, for lengths beyond 32 bits.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <new>

/// More addresses than memory: the pages at the end are its own, all before them share a few. It is at least
/// one byte longer than its length.
class FoldedBytes {
public:
    FoldedBytes(size_t length, char content) : size_((length / kFold + 1) * kFold)
    {
        constexpr int kProtection = PROT_READ | PROT_WRITE;
        start_ = static_cast<char *>(
            mmap(nullptr, size_, kProtection, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
        const int file = memfd_create("folded", 0);
        if (start_ == MAP_FAILED || file < 0 || ftruncate(file, kFold) != 0)
            throw std::bad_alloc();
        for (size_t offset = 0; offset + kFold < size_; offset += kFold)
            if (mmap(start_ + offset, kFold, kProtection, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED)
                throw std::bad_alloc();
        close(file);
        std::memset(start_, content, kFold);
        std::memset(start_ + size_ - kFold, content, kFold);
    }
    ~FoldedBytes() { munmap(start_, size_); }
    FoldedBytes(const FoldedBytes &) = delete;
    FoldedBytes &operator=(const FoldedBytes &) = delete;

    char *Start() const { return start_; }

private:
    static constexpr size_t kFold = size_t{2} << 20;

    size_t size_;
    char *start_;
};

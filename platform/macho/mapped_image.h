// An image in memory, at the place where it will run.
#pragma once

#include "platform/macho/image.h"

namespace macho {

/// Memory for an image, unmapped in the destructor.
class MappedImage {
public:
    /// Reserves the memory and fills it from the file; nothing is fixed up yet, and all of it is writable.
    /// The image must outlive this. Throws LoadError.
    explicit MappedImage(const Image &image);
    ~MappedImage();
    MappedImage(const MappedImage &) = delete;
    MappedImage &operator=(const MappedImage &) = delete;

    /// The place in memory of an address of the image.
    void *At(uint64_t address) const { return base_ + (address - image_.begin); }
    /// The address of a place in memory.
    uint64_t AddressOf(const void *place) const
    {
        return static_cast<uint64_t>(static_cast<const uint8_t *>(place) - base_) + image_.begin;
    }
    bool Contains(const void *place) const
    {
        return place >= base_ && place < base_ + (image_.end - image_.begin);
    }

    /// A copy of the T at a place in memory. Throws LoadError unless it lies in a segment.
    template <typename T>
    T Read(const void *place, std::string_view what) const
    {
        Require(place, sizeof(T), what);
        T value;
        std::memcpy(&value, place, sizeof value);
        return value;
    }

    /// The string at a place in memory. Throws LoadError unless it lies in a segment.
    const char *StringAt(const void *place, std::string_view what) const;

    /// Gives the segments the protection that the image asks for. Throws LoadError.
    void Protect() const;

private:
    void Require(const void *place, uint64_t size, std::string_view what) const;

    const Image &image_;
    uint8_t *base_ = nullptr;
};

} // namespace macho

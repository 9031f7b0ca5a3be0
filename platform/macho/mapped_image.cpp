// Puts an image into memory.
#include "platform/macho/mapped_image.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace macho {

namespace {

[[noreturn]] void ThrowErrno(const std::string &what)
{
    throw LoadError(what + ": " + std::generic_category().message(errno));
}

} // namespace

MappedImage::MappedImage(const Image &image) : image_(image)
{
    void *const memory = mmap(nullptr, image.end - image.begin, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        ThrowErrno("image: " + Hex(image.end - image.begin) + " bytes of memory");
    base_ = static_cast<uint8_t *>(memory);
    for (const Segment &segment : image.segments) {
        if (segment.content.Size() != 0)
            std::memcpy(At(segment.address), segment.content.Data(), segment.content.Size());
    }
}

MappedImage::~MappedImage()
{
    munmap(base_, image_.end - image_.begin);
}

void MappedImage::Protect() const
{
    for (const Segment &segment : image_.segments) {
        if (segment.size == 0 || !segment.IsInMemory())
            continue;
        void *const place = At(segment.address);
        const auto pageSize = static_cast<uint64_t>(getpagesize());
        if ((segment.address - image_.begin) % pageSize != 0)
            throw LoadError("segment " + segment.name +
                            ": does not begin at a page of this system, which has " + Hex(pageSize) +
                            " bytes");
        const bool isWritable = segment.isWritable && !segment.isConstant;
        const int protection = (segment.isReadable ? PROT_READ : 0) | (isWritable ? PROT_WRITE : 0) |
                               (segment.isExecutable ? PROT_EXEC : 0);
        // The processor may still have other instructions of this place.
        if (segment.isExecutable)
            __builtin___clear_cache(static_cast<char *>(place), static_cast<char *>(place) + segment.size);
        if (mprotect(place, segment.size, protection) != 0)
            ThrowErrno("segment " + segment.name);
    }
}

void MappedImage::Require(const void *place, uint64_t size, std::string_view what) const
{
    if (!Contains(place))
        throw LoadError(std::string(what) + ": a pointer leads out of the image");
    image_.SegmentAt(AddressOf(place), size, what);
}

const char *MappedImage::StringAt(const void *place, std::string_view what) const
{
    Require(place, 1, what);
    const Segment &segment = image_.SegmentAt(AddressOf(place), 1, what);
    const uint64_t room = segment.address + segment.size - AddressOf(place);
    if (std::memchr(place, 0, room) == nullptr)
        throw LoadError(std::string(what) + ": a string has no end");
    return static_cast<const char *>(place);
}

} // namespace macho

// Reads a file's bytes; each access is checked against the file's end.
#include "platform/macho/bytes.h"

namespace macho {

Bytes Bytes::Slice(uint64_t offset, uint64_t size, std::string_view what) const
{
    if (offset > size_ || size > size_ - offset)
        throw LoadError(std::string(what) + ": " + Hex(size) + " bytes at " + Hex(offset) +
                        " are beyond the end at " + Hex(size_));
    return Bytes(data_ + offset, size);
}

std::string_view Bytes::CString(uint64_t offset, std::string_view what) const
{
    const Bytes rest = Slice(offset, offset <= size_ ? size_ - offset : 0, what);
    const void *const end = rest.size_ == 0 ? nullptr : std::memchr(rest.data_, 0, rest.size_);
    if (end == nullptr)
        throw LoadError(std::string(what) + ": the string at " + Hex(offset) + " has no end");
    const char *const begin = reinterpret_cast<const char *>(rest.data_);
    return std::string_view(begin, static_cast<size_t>(static_cast<const char *>(end) - begin));
}

std::string_view Cursor::NextCString()
{
    const std::string_view text = bytes_.CString(position_, what_);
    position_ += text.size() + 1;
    return text;
}

uint64_t Cursor::NextUnsignedLeb()
{
    uint64_t value = 0;
    for (unsigned shift = 0;; shift += 7) {
        const uint8_t byte = Next<uint8_t>();
        const uint64_t bits = byte & 0x7F;
        if (shift >= 64 || (bits << shift) >> shift != bits)
            Fail("a number is wider than 64 bits");
        value |= bits << shift;
        if ((byte & 0x80) == 0)
            return value;
    }
}

int64_t Cursor::NextSignedLeb()
{
    uint64_t value = 0;
    unsigned shift = 0;
    uint8_t byte = 0;
    do {
        if (shift >= 64)
            Fail("a number is wider than 64 bits");
        byte = Next<uint8_t>();
        value |= static_cast<uint64_t>(byte & 0x7F) << shift;
        shift += 7;
    } while ((byte & 0x80) != 0);
    if (shift < 64 && (byte & 0x40) != 0)
        value |= ~uint64_t{0} << shift;
    return static_cast<int64_t>(value);
}

void Cursor::Fail(const std::string &reason) const
{
    throw LoadError(std::string(what_) + ": " + reason + " at " + Hex(position_));
}

} // namespace macho

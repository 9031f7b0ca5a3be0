// Reads entries of the section __eh_frame.
#include "platform/macho/dwarf_frames.h"

#include "platform/macho/dwarf_instructions.h"
#include "platform/macho/unwinding.h"

namespace macho {

namespace {

constexpr uint8_t kOmitted = 0xFF, kPointer = 0x00, kRelativePointer = 0x10, kRelativeSlot = 0x9B;

/// One record of the section: its bytes after the length.
struct Record {
    Bytes bytes;
    /// Where `bytes` begins.
    uint64_t address;
};

class FrameSection {
public:
    explicit FrameSection(const Image &image) : section_(image.FindSection("__TEXT", "__eh_frame"))
    {
        if (section_ == nullptr)
            throw LoadError("__eh_frame: the section is missing");
    }

    Record At(uint64_t offset) const
    {
        const auto size = section_->content.Read<uint32_t>(offset, "__eh_frame");
        return {section_->content.Slice(offset + sizeof size, size, "__eh_frame"),
                section_->address + offset + sizeof size};
    }

private:
    const Section *section_;
};

/// Reads the contents of a record, including pointers that are relative to their own place.
class RecordReader {
public:
    explicit RecordReader(const Record &record) : record_(record), cursor_(record.bytes, "__eh_frame") {}

    Cursor &Plain() { return cursor_; }

    uint64_t Pointer(uint8_t encoding)
    {
        const uint64_t place = record_.address + cursor_.Position();
        switch (encoding) {
        case kPointer:
            return cursor_.Next<uint64_t>();
        case kRelativePointer: {
            const auto distance = cursor_.Next<uint64_t>();
            return distance == 0 ? 0 : place + distance;
        }
        case kRelativeSlot:
            return place + static_cast<uint64_t>(int64_t{cursor_.Next<int32_t>()});
        default:
            cursor_.Fail("pointers of encoding " + Hex(encoding) + " are not supported");
        }
    }

    std::vector<uint8_t> Rest()
    {
        const uint64_t position = cursor_.Position();
        const Bytes rest = record_.bytes.Slice(position, record_.bytes.Size() - position, "__eh_frame");
        return std::vector<uint8_t>(rest.Data(), rest.Data() + rest.Size());
    }

private:
    Record record_;
    Cursor cursor_;
};

/// What several entries share (CIE).
struct Common {
    uint8_t pointerEncoding = kPointer, tableEncoding = kOmitted;
    bool hasAugmentation = false;
    uint64_t personalitySlot = 0;
    std::vector<uint8_t> instructions;
};

Common ReadCommon(const Record &record, uint8_t returnAddress)
{
    RecordReader reader(record);
    Cursor &cursor = reader.Plain();
    Common common;
    if (cursor.Next<uint32_t>() != 0)
        cursor.Fail("an entry does not refer to a common one");
    if (cursor.Next<uint8_t>() != 1)
        cursor.Fail("an unknown version");
    const std::string_view augmentation = cursor.NextCString();
    if (cursor.NextUnsignedLeb() != 1 || cursor.NextSignedLeb() != dwarf::DataAlignment ||
        cursor.Next<uint8_t>() != returnAddress)
        cursor.Fail("unusual alignments or return address");
    for (const char letter : augmentation) {
        switch (letter) {
        case 'z':
            common.hasAugmentation = true;
            cursor.NextUnsignedLeb();
            break;
        case 'P': {
            const auto encoding = cursor.Next<uint8_t>();
            if (encoding != kRelativeSlot)
                cursor.Fail("a personality routine of encoding " + Hex(encoding) + " is not supported");
            common.personalitySlot = reader.Pointer(encoding);
            break;
        }
        case 'L':
            common.tableEncoding = cursor.Next<uint8_t>();
            break;
        case 'R':
            common.pointerEncoding = cursor.Next<uint8_t>();
            break;
        default:
            cursor.Fail("an unknown augmentation");
        }
    }
    common.instructions = reader.Rest();
    return common;
}

} // namespace

UnwindEntry ReadDwarfEntry(const Image &image, uint64_t offset)
{
    const FrameSection section(image);
    RecordReader reader(section.At(offset));
    Cursor &cursor = reader.Plain();
    const auto distance = cursor.Next<uint32_t>();
    // Counted back from its own place, right after the length.
    if (distance == 0 || distance > offset + sizeof(uint32_t))
        cursor.Fail("an entry lacks its common one");
    const Common common = ReadCommon(section.At(offset + sizeof(uint32_t) - distance),
                                     UnwindingFor(image.processor).returnAddress);

    UnwindEntry entry;
    entry.begin = reader.Pointer(common.pointerEncoding);
    entry.end = entry.begin + cursor.Next<uint64_t>();
    entry.personalitySlot = common.personalitySlot;
    if (common.hasAugmentation) {
        const uint64_t size = cursor.NextUnsignedLeb();
        if (common.tableEncoding != kOmitted && size != 0)
            entry.handlerTable = reader.Pointer(common.tableEncoding);
    }
    entry.instructions = common.instructions;
    const std::vector<uint8_t> own = reader.Rest();
    entry.instructions.insert(entry.instructions.end(), own.begin(), own.end());
    return entry;
}

} // namespace macho

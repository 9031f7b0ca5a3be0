// Reads the compact unwind table, which has 32 bits of rules for each function.
#include "platform/macho/unwind_info.h"

#include <map>

#include "platform/macho/unwinding.h"

namespace macho {

namespace {

constexpr std::string_view kWhat = "__unwind_info";

struct Header {
    uint32_t version, commonOffset, commonCount, personalityOffset, personalityCount, indexOffset, indexCount;
};

struct IndexEntry {
    uint32_t function, pageOffset, tablesOffset;
};

struct TableEntry {
    uint32_t function, handlerTable;
};

constexpr uint32_t kRegularPage = 2, kCompressedPage = 3;

struct RegularPage {
    uint32_t kind;
    uint16_t entriesOffset, entryCount;
};

struct RegularEntry {
    uint32_t function, encoding;
};

struct CompressedPage {
    uint32_t kind;
    uint16_t entriesOffset, entryCount, encodingsOffset, encodingCount;
};

constexpr uint32_t kHasTable = 0x40000000, kPersonalityMask = 0x30000000;

/// A function in the table.
struct Row {
    uint64_t begin, end;
    uint32_t encoding;
};

/// The rows of all pages, in the order of their addresses.
class Table {
public:
    explicit Table(const Image &image, Bytes bytes)
        : image_(image), bytes_(bytes), header_(bytes.Read<Header>(0, kWhat))
    {
        if (header_.version != 1)
            throw LoadError(std::string(kWhat) + ": version " + std::to_string(header_.version) +
                            " is not supported");
        for (uint32_t i = 0; i + 1 < header_.indexCount; ++i)
            ReadPage(Index(i), Index(i + 1));
    }

    const std::vector<Row> &Rows() const { return rows_; }

    uint64_t PersonalitySlot(uint32_t number) const
    {
        if (number == 0)
            return 0;
        if (number > header_.personalityCount)
            throw LoadError(std::string(kWhat) + ": there is no personality " + std::to_string(number));
        return image_.begin +
               bytes_.Read<uint32_t>(header_.personalityOffset + (number - 1) * sizeof(uint32_t), kWhat);
    }

    /// 0 for a function without handlers.
    uint64_t HandlerTable(uint64_t function) const
    {
        const auto found = handlerTables_.find(function);
        return found == handlerTables_.end() ? 0 : found->second;
    }

private:
    IndexEntry Index(uint32_t i) const
    {
        return bytes_.Read<IndexEntry>(uint64_t{header_.indexOffset} + uint64_t{i} * sizeof(IndexEntry),
                                       kWhat);
    }

    void AddRow(uint64_t function, uint32_t word)
    {
        if (!rows_.empty()) {
            if (function < rows_.back().begin)
                throw LoadError(std::string(kWhat) + ": functions are not in order at " + Hex(function));
            rows_.back().end = function;
        }
        rows_.push_back({function, function, word});
    }

    void ReadPage(const IndexEntry &index, const IndexEntry &next)
    {
        for (uint64_t at = index.tablesOffset; at < next.tablesOffset; at += sizeof(TableEntry)) {
            const auto entry = bytes_.Read<TableEntry>(at, kWhat);
            handlerTables_[image_.begin + entry.function] = image_.begin + entry.handlerTable;
        }
        if (index.pageOffset != 0) {
            const auto kind = bytes_.Read<uint32_t>(index.pageOffset, kWhat);
            if (kind == kRegularPage)
                ReadRegularPage(index);
            else if (kind == kCompressedPage)
                ReadCompressedPage(index);
            else
                throw LoadError(std::string(kWhat) + ": a page of kind " + std::to_string(kind));
        }
        AddRow(image_.begin + next.function, 0);
    }

    void ReadRegularPage(const IndexEntry &index)
    {
        const auto page = bytes_.Read<RegularPage>(index.pageOffset, kWhat);
        for (uint64_t i = 0; i < page.entryCount; ++i) {
            const auto entry = bytes_.Read<RegularEntry>(
                index.pageOffset + page.entriesOffset + i * sizeof(RegularEntry), kWhat);
            AddRow(image_.begin + entry.function, entry.encoding);
        }
    }

    void ReadCompressedPage(const IndexEntry &index)
    {
        const auto page = bytes_.Read<CompressedPage>(index.pageOffset, kWhat);
        for (uint64_t i = 0; i < page.entryCount; ++i) {
            const auto word =
                bytes_.Read<uint32_t>(index.pageOffset + page.entriesOffset + i * sizeof(uint32_t), kWhat);
            AddRow(image_.begin + index.function + CompactField(word, 0, 24),
                   EncodingOf(index, page, word >> 24));
        }
    }

    /// Common encodings are in a list for the whole image, others in the page's.
    uint32_t EncodingOf(const IndexEntry &index, const CompressedPage &page, uint32_t number) const
    {
        if (number < header_.commonCount)
            return bytes_.Read<uint32_t>(header_.commonOffset + uint64_t{number} * sizeof(uint32_t), kWhat);
        const uint32_t inPage = number - header_.commonCount;
        if (inPage >= page.encodingCount)
            throw LoadError(std::string(kWhat) + ": there is no encoding " + std::to_string(number));
        return bytes_.Read<uint32_t>(
            index.pageOffset + page.encodingsOffset + uint64_t{inPage} * sizeof(uint32_t), kWhat);
    }

    const Image &image_;
    Bytes bytes_;
    Header header_;
    std::vector<Row> rows_;
    std::map<uint64_t, uint64_t> handlerTables_;
};

UnwindEntry EntryOf(const Image &image, const Table &table, const Row &row)
{
    const Unwinding &unwinding = UnwindingFor(image.processor);
    if ((row.encoding & kCompactMode) == unwinding.dwarfMode)
        return ReadDwarfEntry(image, CompactField(row.encoding, 0, 24));
    UnwindEntry entry;
    entry.begin = row.begin;
    entry.end = row.end;
    entry.personalitySlot = table.PersonalitySlot((row.encoding & kPersonalityMask) >> 28);
    if ((row.encoding & kHasTable) != 0)
        entry.handlerTable = table.HandlerTable(row.begin);
    entry.instructions = unwinding.rules(image, row.begin, row.encoding);
    return entry;
}

} // namespace

std::vector<UnwindEntry> ReadUnwindInfo(const Image &image)
{
    std::vector<UnwindEntry> entries;
    const Section *const section = image.FindSection("__TEXT", "__unwind_info");
    if (section == nullptr)
        return entries;
    const Table table(image, section->content);
    for (const Row &row : table.Rows()) {
        if ((row.encoding & kCompactMode) == 0)
            continue;
        UnwindEntry entry = EntryOf(image, table, row);
        image.SegmentAt(entry.begin, entry.end - entry.begin, kWhat);
        for (const uint64_t address : {entry.personalitySlot, entry.handlerTable}) {
            if (address != 0)
                image.ContentAt(address, sizeof(uint64_t), kWhat);
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace macho

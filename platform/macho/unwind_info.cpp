// Reads the compact unwind table, which has 32 bits of rules for each function, and writes these as DWARF
// instructions.
#include "platform/macho/unwind_info.h"

#include <algorithm>
#include <array>
#include <map>

#include "platform/macho/dwarf_frames.h"

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

namespace encoding {
constexpr uint32_t HasTable = 0x40000000, PersonalityMask = 0x30000000, ModeMask = 0x0F000000;
constexpr uint32_t FrameMode = 0x01000000, StackMode = 0x02000000, LargeStackMode = 0x03000000,
                   DwarfMode = 0x04000000;
} // namespace encoding

uint32_t Field(uint32_t word, unsigned first, unsigned count)
{
    return (word >> first) & ((1U << count) - 1);
}

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
            AddRow(image_.begin + index.function + Field(word, 0, 24), EncodingOf(index, page, word >> 24));
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

/// Registers are numbered from 1 to 6; 0 stands for none.
constexpr std::array<uint8_t, 7> kRegisters = {0,          dwarf::Rbx, dwarf::R12, dwarf::R13,
                                               dwarf::R14, dwarf::R15, dwarf::Rbp};

/// Says that the register was saved `wordsBelow` words below the frame's address.
void AppendSaved(std::vector<uint8_t> &instructions, uint8_t registerNumber, uint64_t wordsBelow)
{
    instructions.push_back(static_cast<uint8_t>(dwarf::OffsetOf | registerNumber));
    AppendUnsignedLeb(instructions, wordsBelow);
}

/// The rules of a function with its frame in rbp; up to five saved registers lie below, the lowest as many
/// words down as the encoding says.
std::vector<uint8_t> RulesOfFrame(uint32_t word)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfa, dwarf::Rbp, 16};
    AppendSaved(rules, dwarf::Rbp, 2);
    const uint32_t lowest = Field(word, 16, 8);
    for (unsigned i = 0; i < 5; ++i) {
        const uint32_t number = Field(word, i * 3, 3);
        if (number == 0)
            continue;
        if (number >= kRegisters.size() || lowest < i)
            throw LoadError(std::string(kWhat) + ": a frame with wrong registers");
        AppendSaved(rules, kRegisters[number], 2 + lowest - i);
    }
    return rules;
}

/// The registers in the order in which they were saved, from that order's number among all orders of `count`
/// of six registers.
std::vector<uint32_t> RegistersOfPermutation(uint32_t count, uint32_t permutation)
{
    if (count > 6)
        throw LoadError(std::string(kWhat) + ": too many saved registers");
    // Each digit says which of the remaining registers comes next.
    std::vector<uint32_t> digits(count);
    uint32_t rest = permutation;
    for (uint32_t i = count; i-- > 0;) {
        const uint32_t choices = 6 - i;
        digits[i] = rest % choices;
        rest /= choices;
    }
    std::vector<uint32_t> left = {1, 2, 3, 4, 5, 6};
    std::vector<uint32_t> registers;
    for (const uint32_t digit : digits) {
        registers.push_back(left[digit]);
        left.erase(left.begin() + digit);
    }
    return registers;
}

/// The rules of a function whose frame of `stackSize` bytes is in rsp; the saved registers lie right below
/// the return address.
std::vector<uint8_t> RulesOfStack(uint32_t word, uint64_t stackSize)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfaOffset};
    AppendUnsignedLeb(rules, stackSize);
    const uint32_t count = Field(word, 10, 3);
    const std::vector<uint32_t> registers = RegistersOfPermutation(count, Field(word, 0, 10));
    for (uint32_t i = 0; i < count; ++i)
        AppendSaved(rules, kRegisters[registers[i]], 1 + count - i);
    return rules;
}

/// The size of a large stack, from the instruction that makes it.
uint64_t LargeStackSize(const Image &image, const Row &row)
{
    const uint64_t place = row.begin + Field(row.encoding, 16, 8);
    const auto size = image.ContentAt(place, sizeof(uint32_t), kWhat).Read<uint32_t>(0, kWhat);
    return size + uint64_t{Field(row.encoding, 13, 3)} * 8;
}

UnwindEntry EntryOf(const Image &image, const Table &table, const Row &row)
{
    if ((row.encoding & encoding::ModeMask) == encoding::DwarfMode)
        return ReadDwarfEntry(image, Field(row.encoding, 0, 24));
    UnwindEntry entry;
    entry.begin = row.begin;
    entry.end = row.end;
    entry.personalitySlot = table.PersonalitySlot((row.encoding & encoding::PersonalityMask) >> 28);
    if ((row.encoding & encoding::HasTable) != 0)
        entry.handlerTable = table.HandlerTable(row.begin);
    switch (row.encoding & encoding::ModeMask) {
    case encoding::FrameMode:
        entry.instructions = RulesOfFrame(row.encoding);
        break;
    case encoding::StackMode:
        entry.instructions = RulesOfStack(row.encoding, uint64_t{Field(row.encoding, 16, 8)} * 8);
        break;
    case encoding::LargeStackMode:
        entry.instructions = RulesOfStack(row.encoding, LargeStackSize(image, row));
        break;
    default:
        throw LoadError(std::string(kWhat) + ": the rules " + Hex(row.encoding) + " are not known");
    }
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
        if ((row.encoding & encoding::ModeMask) == 0)
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

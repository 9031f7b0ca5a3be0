// Reads chained fixups: each pointer says what it becomes and how far away the next one is.
#include "platform/macho/fixups.h"
#include "platform/macho/format.h"

namespace macho {

namespace {

constexpr uint64_t kStride = 4;

/// `count` bits of a word from bit `first` on.
uint64_t Bits(uint64_t word, unsigned first, unsigned count)
{
    return (word >> first) & ((uint64_t{1} << count) - 1);
}

/// The symbols that the chains bind to, without addresses.
std::vector<Bind> ReadImports(Bytes table, const format::ChainedFixupsHeader &header, const Image &image)
{
    const std::string_view what = "chained imports";
    if (header.symbolsFormat != 0)
        throw LoadError("chained imports: compressed symbols are not supported");
    const Bytes symbols = table.Slice(
        header.symbolsOffset, table.Size() - std::min<uint64_t>(header.symbolsOffset, table.Size()), what);
    Cursor cursor(table, what, header.importsOffset);
    // No more than fit into the table.
    if (header.importCount > table.Size() / sizeof(uint32_t))
        cursor.Fail("there are " + Hex(header.importCount) + " of them");
    std::vector<Bind> imports;
    for (uint32_t i = 0; i < header.importCount; ++i) {
        Bind import;
        uint64_t nameOffset = 0;
        if (header.importsFormat == format::kChainedImport ||
            header.importsFormat == format::kChainedImportAddend) {
            const auto word = cursor.Next<uint32_t>();
            import.ordinal = static_cast<uint8_t>(Bits(word, 0, 8));
            if (import.ordinal > 0xF0)
                import.ordinal -= 0x100;
            import.isWeakImport = Bits(word, 8, 1) != 0;
            nameOffset = Bits(word, 9, 23);
            if (header.importsFormat == format::kChainedImportAddend)
                import.addend = cursor.Next<int32_t>();
        } else if (header.importsFormat == format::kChainedImportAddend64) {
            const auto word = cursor.Next<uint64_t>();
            import.ordinal = static_cast<uint16_t>(Bits(word, 0, 16));
            if (import.ordinal > 0xFFF0)
                import.ordinal -= 0x10000;
            import.isWeakImport = Bits(word, 16, 1) != 0;
            nameOffset = Bits(word, 32, 32);
            import.addend = cursor.Next<int64_t>();
        } else {
            cursor.Fail("their format " + std::to_string(header.importsFormat) + " is unknown");
        }
        if (!image.HasLibrary(import.ordinal))
            cursor.Fail("there is no library " + std::to_string(import.ordinal));
        import.symbol = symbols.CString(nameOffset, what);
        imports.push_back(import);
    }
    return imports;
}

/// Follows one chain from `offset` in the segment to its end.
void ReadChain(const Segment &segment, uint64_t offset, uint16_t pointerFormat,
               const std::vector<Bind> &imports, Image &image)
{
    const std::string what = "fixup chain in " + segment.name;
    for (;;) {
        const auto word = segment.content.Read<uint64_t>(offset, what);
        const uint64_t address = segment.address + offset;
        if (Bits(word, 63, 1) != 0) {
            const uint64_t ordinal = Bits(word, 0, 24);
            if (ordinal >= imports.size())
                throw LoadError(what + ": there is no import " + std::to_string(ordinal) + " at " +
                                Hex(offset));
            Bind bind = imports[ordinal];
            bind.address = address;
            bind.addend += static_cast<int64_t>(Bits(word, 24, 8));
            image.binds.push_back(bind);
        } else {
            const uint64_t base = pointerFormat == format::kPointer64Offset ? image.begin : 0;
            const uint64_t target = base + Bits(word, 0, 36);
            if (Bits(word, 36, 8) != 0 || target < image.begin || target > image.end)
                throw LoadError(what + ": the pointer at " + Hex(offset) + " points outside the image");
            image.rebases.push_back({address, target});
        }
        const uint64_t next = Bits(word, 51, 12);
        if (next == 0)
            return;
        offset += next * kStride;
    }
}

void ReadSegmentChains(Bytes table, uint64_t startsOffset, const Segment &segment,
                       const std::vector<Bind> &imports, Image &image)
{
    const std::string what = "chain starts of " + segment.name;
    const auto starts = table.Read<format::ChainedStartsInSegment>(startsOffset, what);
    if (starts.pointerFormat != format::kPointer64 && starts.pointerFormat != format::kPointer64Offset)
        throw LoadError(what + ": pointer format " + std::to_string(starts.pointerFormat) +
                        " is not supported");
    if (image.begin + starts.segmentOffset != segment.address)
        throw LoadError(what + ": they belong to another segment");
    if (!segment.isWritable)
        throw LoadError(what + ": the segment is not writable");
    for (uint64_t page = 0; page < starts.pageCount; ++page) {
        const auto start =
            table.Read<uint16_t>(startsOffset + format::kPageStartsOffset + page * sizeof(uint16_t), what);
        if (start == format::kChainEnd)
            continue;
        if ((start & format::kChainMulti) != 0)
            throw LoadError(what + ": several chains in a page are not supported");
        ReadChain(segment, page * starts.pageSize + start, starts.pointerFormat, imports, image);
    }
}

} // namespace

void ReadChainedFixups(Bytes table, Image &image)
{
    const auto header = table.Read<format::ChainedFixupsHeader>(0, "chained fixups");
    if (header.version != 0)
        throw LoadError("chained fixups: version " + std::to_string(header.version) + " is not supported");
    const std::vector<Bind> imports = ReadImports(table, header, image);

    const auto segmentCount = table.Read<uint32_t>(header.startsOffset, "chain starts");
    if (segmentCount > image.segments.size())
        throw LoadError("chain starts: there are only " + std::to_string(image.segments.size()) +
                        " segments");
    for (uint32_t i = 0; i < segmentCount; ++i) {
        const uint64_t entry = uint64_t{header.startsOffset} + sizeof(uint32_t) * (uint64_t{i} + 1);
        const auto offset = table.Read<uint32_t>(entry, "chain starts");
        if (offset != 0)
            ReadSegmentChains(table, uint64_t{header.startsOffset} + offset, image.segments[i], imports,
                              image);
    }
}

} // namespace macho

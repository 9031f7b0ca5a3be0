// Reads the header, the load commands, the segments and the sections.
#include "platform/macho/image_reader.h"

#include <algorithm>
#include <optional>

#include "platform/macho/exports.h"
#include "platform/macho/fixups.h"
#include "platform/macho/format.h"
#include "platform/macho/variadic_messages.h"

namespace macho {

namespace {

/// Higher than any image that this loader is for, and low enough that sums do not overflow.
constexpr uint64_t kHighestAddress = uint64_t{1} << 40;
// Far more than dylibs have, and little enough to be looked through and copied.
constexpr uint64_t kLargestCommands = uint64_t{1} << 20, kLargestContent = uint64_t{1} << 28;

/// The size of the pages that the linker lays an image out in.
uint64_t PageSize(Processor processor)
{
    return processor == Processor::X86_64 ? 0x1000 : 0x4000;
}

/// A name in 16 bytes, followed by a NUL if there is room.
std::string FixedName(const char (&name)[16])
{
    return std::string(name, strnlen(name, sizeof name));
}

void Require(bool condition, const std::string &what, const char *reason)
{
    if (!condition)
        throw LoadError(what + ": " + reason);
}

bool Overlap(uint64_t begin, uint64_t size, uint64_t otherBegin, uint64_t otherSize)
{
    return size != 0 && otherSize != 0 && begin < otherBegin + otherSize && otherBegin < begin + size;
}

/// What load commands say besides segments and libraries: the places of the tables, the platforms that the
/// image was built for, and where a program begins.
struct Tables {
    std::optional<format::DyldInfoCommand> dyldInfo;
    std::optional<format::LinkeditDataCommand> chainedFixups;
    std::optional<format::LinkeditDataCommand> exportsTrie;
    std::vector<uint32_t> platforms;
    std::optional<format::MainCommand> main;
};

Section ReadSection(const format::Section &raw, const Segment &segment, Bytes file)
{
    Section section;
    section.name = FixedName(raw.name);
    section.segment = FixedName(raw.segment);
    section.address = raw.address;
    section.size = raw.size;
    section.type = static_cast<uint8_t>(raw.flags & format::section::TypeMask);
    const std::string what = "section " + section.segment + "," + section.name;
    Require(section.segment == segment.name, what, "is listed in another segment");
    Require(raw.address >= segment.address && raw.address - segment.address <= segment.size &&
                raw.size <= segment.size - (raw.address - segment.address),
            what, "lies outside its segment");
    Require(section.type < format::section::ThreadLocalRegular ||
                section.type > format::section::ThreadLocalInitFunctions,
            what, "thread-local variables are not supported");
    Require(section.type != format::section::InitOffsets, what, "initialiser offsets are not supported");
    if (section.type == format::section::ZeroFill)
        return section;
    const uint64_t offsetInSegment = raw.address - segment.address;
    section.content = segment.content.Slice(offsetInSegment, raw.size, what);
    Require(raw.size == 0 || section.content.Data() == file.Slice(raw.offset, raw.size, what).Data(), what,
            "its offset in the file is not that of its address");
    return section;
}

void ReadSegment(Bytes command, Bytes file, Image &image)
{
    const auto raw = command.Read<format::SegmentCommand>(0, "segment command");
    Segment segment;
    segment.name = FixedName(raw.name);
    const std::string what = "segment " + segment.name;
    segment.address = raw.address;
    segment.size = raw.size;
    segment.isReadable = (raw.initialProtection & 1) != 0;
    segment.isWritable = (raw.initialProtection & 2) != 0;
    segment.isExecutable = (raw.initialProtection & 4) != 0;
    segment.isConstant = (raw.flags & format::kSegmentReadOnly) != 0;
    Require(raw.address % PageSize(image.processor) == 0, what, "does not begin at a page");
    Require(raw.address <= kHighestAddress && raw.size <= kHighestAddress, what, "is too large or too high");
    Require(raw.fileSize <= raw.size, what, "has more in the file than in memory");
    Require(!(segment.isWritable && segment.isExecutable), what, "is writable and executable");
    segment.content = file.Slice(raw.fileOffset, raw.fileSize, what);
    for (const Segment &other : image.segments) {
        Require(!Overlap(segment.address, segment.size, other.address, other.size), what,
                "overlaps another segment");
        Require(!segment.content.Overlaps(other.content), what, "overlaps another segment in the file");
    }

    uint64_t end = segment.address;
    for (uint32_t i = 0; i < raw.sectionCount; ++i) {
        const uint64_t offset = sizeof raw + uint64_t{i} * sizeof(format::Section);
        const Section section = ReadSection(command.Read<format::Section>(offset, what), segment, file);
        Require(section.address >= end, "section " + section.segment + "," + section.name,
                "overlaps the one before it");
        end = section.address + section.size;
        image.sections.push_back(section);
    }
    image.segments.push_back(std::move(segment));
}

std::string ReadDylibName(Bytes command)
{
    const auto raw = command.Read<format::DylibCommand>(0, "dylib command");
    const std::string_view name = command.CString(raw.nameOffset, "dylib command");
    Require(!name.empty(), "dylib command", "the name of the library is empty");
    return std::string(name);
}

void ReadCommand(uint32_t code, Bytes command, Bytes file, Image &image, Tables &tables)
{
    namespace commands = format::command;
    switch (code) {
    case commands::Segment64:
        ReadSegment(command, file, image);
        break;
    case commands::LoadDylib:
    case commands::LoadWeakDylib:
        image.dylibs.push_back(ReadDylibName(command));
        break;
    case commands::DyldInfo:
    case commands::DyldInfoOnly:
        tables.dyldInfo = command.Read<format::DyldInfoCommand>(0, "dyld info command");
        break;
    case commands::ChainedFixups:
        tables.chainedFixups = command.Read<format::LinkeditDataCommand>(0, "chained fixups command");
        break;
    case commands::ExportsTrie:
        tables.exportsTrie = command.Read<format::LinkeditDataCommand>(0, "exports trie command");
        break;
    case commands::BuildVersion:
        tables.platforms.push_back(
            command.Read<format::BuildVersionCommand>(0, "build version command").platform);
        break;
    case commands::VersionMinMacos:
        tables.platforms.push_back(format::platform::Macos);
        break;
    case commands::VersionMinIos:
        tables.platforms.push_back(format::platform::Ios);
        break;
    case commands::VersionMinTvos:
        tables.platforms.push_back(format::platform::Tvos);
        break;
    case commands::VersionMinWatchos:
        tables.platforms.push_back(format::platform::Watchos);
        break;
    case commands::Main:
        tables.main = command.Read<format::MainCommand>(0, "main command");
        break;
    case commands::UnixThread:
        throw LoadError("image: sets registers to start (LC_UNIXTHREAD); only a main function (LC_MAIN) is "
                        "supported");
    // For debuggers and linkers only, and the system's linker, whose part the loader plays.
    case commands::LoadDylinker:
    case commands::Symtab:
    case commands::Dysymtab:
    case commands::IdDylib:
    case commands::Uuid:
    case commands::FunctionStarts:
    case commands::DataInCode:
    case commands::SourceVersion:
    case commands::CodeSignature:
    case commands::Rpath:
        break;
    default:
        throw LoadError("load command " + Hex(code) + " is not supported");
    }
}

Tables ReadCommands(const format::Header &header, Bytes file, Image &image)
{
    Tables tables;
    const Bytes commands = file.Slice(sizeof header, header.commandBytes, "load commands");
    Require(commands.Size() <= kLargestCommands, "load commands", "are too large");
    uint64_t offset = 0;
    for (uint32_t i = 0; i < header.commandCount; ++i) {
        const std::string what = "load command " + std::to_string(i);
        const auto command = commands.Read<format::Command>(offset, what);
        Require(command.size >= sizeof command && command.size % 8 == 0, what, "has a wrong size");
        ReadCommand(command.command, commands.Slice(offset, command.size, what), file, image, tables);
        offset += command.size;
    }
    return tables;
}

/// Sets where the image lies in memory.
void SetBounds(Bytes file, Image &image)
{
    const Segment *first = nullptr;
    for (const Segment &segment : image.segments) {
        if (!segment.IsInMemory())
            continue;
        if (first == nullptr || segment.address < first->address)
            first = &segment;
        image.end = std::max(image.end, segment.address + segment.size);
    }
    Require(first != nullptr, "image", "has no segment");
    // Tables count from there.
    Require(first->content.Data() == file.Data() && first->content.Size() >= sizeof(format::Header),
            "segment " + first->name, "does not begin with the header");
    image.begin = first->address;
}

void RequireBoundedSize(const Image &image)
{
    Require(image.end <= kHighestAddress, "image", "is too large or too high");
    uint64_t contentSize = 0;
    for (const Segment &segment : image.segments)
        contentSize += segment.content.Size();
    Require(contentSize <= kLargestContent, "image", "has too much in the file");
}

void ReadTables(const Tables &tables, Bytes file, Image &image)
{
    if (tables.dyldInfo) {
        const format::DyldInfoCommand &info = *tables.dyldInfo;
        ReadRebases(file.Slice(info.rebaseOffset, info.rebaseSize, "rebase table"), image);
        ReadBinds(file.Slice(info.bindOffset, info.bindSize, "bind table"), BindTable::Ordinary, image);
        ReadBinds(file.Slice(info.lazyBindOffset, info.lazyBindSize, "lazy bind table"), BindTable::Lazy,
                  image);
        ReadExports(file.Slice(info.exportOffset, info.exportSize, "exports trie"), image);
    }
    if (tables.chainedFixups)
        ReadChainedFixups(
            file.Slice(tables.chainedFixups->offset, tables.chainedFixups->size, "chained fixups"), image);
    if (tables.exportsTrie)
        ReadExports(file.Slice(tables.exportsTrie->offset, tables.exportsTrie->size, "exports trie"), image);
}

/// A lazy pointer leads to a stub helper until it is bound, and nothing binds it after loading. One without a
/// bind must lead to a function: to one of the image that other libraries may replace.
void RequireBoundLazyPointers(const Image &image)
{
    const Section *const helpers = image.FindSection("__TEXT", "__stub_helper");
    std::vector<uint64_t> bound;
    for (const Bind &bind : image.binds)
        bound.push_back(bind.address);
    for (const Rebase &rebase : image.rebases) {
        if (helpers == nullptr || rebase.target - helpers->address >= helpers->size)
            bound.push_back(rebase.address);
    }
    std::sort(bound.begin(), bound.end());
    for (const Section &section : image.sections) {
        if (section.type != format::section::LazySymbolPointers)
            continue;
        for (uint64_t offset = 0; offset < section.size; offset += sizeof(uint64_t)) {
            const uint64_t address = section.address + offset;
            if (!std::binary_search(bound.begin(), bound.end(), address))
                throw LoadError("section " + section.segment + "," + section.name + ": the lazy pointer at " +
                                Hex(address) + " is bound to nothing");
        }
    }
}

/// The address of a program's main function.
uint64_t FindEntry(const format::Header &header, const Tables &tables, const Image &image)
{
    Require((header.flags & format::kFlagPositionIndependent) != 0, "image",
            "must lie at its address; only position-independent programs (MH_PIE) are supported");
    if (!tables.main)
        throw LoadError("image: has no main function (LC_MAIN)");
    const std::string what = "main function";
    const uint64_t offset = tables.main->entryOffset;
    Require(offset < image.end - image.begin, what, "lies outside the image");
    const Segment &segment = image.SegmentAt(image.begin + offset, 1, what);
    Require(segment.isExecutable && image.begin + offset - segment.address < segment.content.Size(), what,
            "lies outside the code");
    return image.begin + offset;
}

} // namespace

Image ParseImage(Bytes wholeFile, Processor processor, ImageKind kind)
{
    const Bytes file = FindImage(wholeFile, processor, kind);
    const auto header = file.Read<format::Header>(0, "header");
    Image image;
    image.processor = processor;
    const Tables tables = ReadCommands(header, file, image);
    RequireMacos(tables.platforms);
    SetBounds(file, image);
    RequireBoundedSize(image);
    if (kind == ImageKind::Program)
        image.entry = FindEntry(header, tables, image);
    ReadTables(tables, file, image);
    RequireBoundLazyPointers(image);
    RequireNoVariadicMessages(image);
    return image;
}

} // namespace macho

// Recognises the kinds of Mach-O files, and finds the slice of a universal file that can be loaded.
#include "platform/macho/file_kind.h"

#include <algorithm>
#include <optional>

#include "platform/macho/format.h"

namespace macho {

namespace {

/// The first row of a processor's type is what its files are as a rule.
constexpr struct {
    uint32_t type, subtype;
    const char *name;
    /// The processor, if the loader reads its images; otherwise none.
    std::optional<Processor> processor;
} kProcessors[] = {
    {format::kCpuX86_64, format::kCpuSubtypeX86_64All, "x86-64", Processor::X86_64},
    {format::kCpuX86_64, 8, "x86-64h", {}},
    {format::kCpuArm64, format::kCpuSubtypeArm64All, "arm64", Processor::Arm64},
    {format::kCpuArm64, 2, "arm64e", {}},
    {0x0200000C, 1, "arm64_32", {}},
    {0x00000007, 3, "i386", {}},
    {0x0000000C, 9, "armv7", {}},
    {0x00000012, 0, "ppc", {}},
    {0x01000012, 0, "ppc64", {}},
};

constexpr struct {
    uint32_t type;
    const char *name;
} kFileTypes[] = {
    {1, "object file"},
    {format::kFileExecutable, "executable"},
    {3, "library at a fixed address"},
    {4, "core file"},
    {5, "preloaded executable"},
    {format::kFileDylib, "dylib"},
    {7, "dynamic linker"},
    {format::kFileBundle, "bundle"},
    {9, "stub of a dylib"},
    {10, "debugging companion (dSYM)"},
    {11, "driver (kernel extension)"},
    {12, "set of kernel files"},
};

std::string ProcessorName(uint32_t type, uint32_t subtype)
{
    const uint32_t plainSubtype = subtype & ~format::kCpuSubtypeFlags;
    std::string name;
    for (const auto &row : kProcessors) {
        if (row.type != type)
            continue;
        if (row.subtype == plainSubtype)
            return row.name;
        if (name.empty())
            name = std::string(row.name) + " of the subtype " + Hex(plainSubtype);
    }
    return name.empty() ? "a processor of type " + Hex(type) : name;
}

std::string FileTypeName(uint32_t type)
{
    for (const auto &row : kFileTypes) {
        if (row.type == type)
            return row.name;
    }
    return "file of type " + Hex(type);
}

std::string PlatformName(uint32_t platform)
{
    constexpr const char *kNames[] = {nullptr,
                                      "macOS",
                                      "iOS",
                                      "tvOS",
                                      "watchOS",
                                      "bridgeOS",
                                      "Mac Catalyst",
                                      "the simulator of iOS",
                                      "the simulator of tvOS",
                                      "the simulator of watchOS",
                                      "DriverKit",
                                      "visionOS",
                                      "the simulator of visionOS"};
    return platform == 0 || platform >= std::size(kNames) ? "platform " + std::to_string(platform)
                                                          : kNames[platform];
}

/// Whether an image of this type and subtype is for the processor.
bool IsFor(Processor processor, uint32_t cpuType, uint32_t cpuSubtype)
{
    return std::any_of(std::begin(kProcessors), std::end(kProcessors), [&](const auto &row) {
        return row.processor == processor && row.type == cpuType &&
               row.subtype == (cpuSubtype & ~format::kCpuSubtypeFlags);
    });
}

/// What is looked for in a file.
struct Wanted {
    Processor processor;
    ImageKind kind;
};

/// Whether an image of this type is loaded as the kind.
bool IsOf(ImageKind kind, uint32_t fileType)
{
    if (kind == ImageKind::Program)
        return fileType == format::kFileExecutable;
    return fileType == format::kFileDylib || fileType == format::kFileBundle;
}

/// The end of a message about a file without such an image.
std::string Needed(Wanted wanted)
{
    const auto *const row = std::find_if(std::begin(kProcessors), std::end(kProcessors),
                                         [&](const auto &one) { return one.processor == wanted.processor; });
    return std::string("; a 64-bit ") +
           (wanted.kind == ImageKind::Program ? "executable" : "dylib or bundle") + " for " + row->name +
           " is needed";
}

void RequireLoadable(Bytes file, Wanted wanted)
{
    const bool isBigEndian = file.Read<uint8_t>(0, "header") == 0xFE;
    const auto word = [&](uint64_t index) {
        const auto value = file.Read<uint32_t>(index * sizeof(uint32_t), "header");
        return isBigEndian ? __builtin_bswap32(value) : value;
    };
    const uint32_t magic = word(0);
    if (magic != format::kMagic32 && magic != format::kMagic64)
        throw LoadError("it is no Mach-O file" + Needed(wanted));
    const uint32_t cpuType = word(1), cpuSubtype = word(2), fileType = word(3);
    if (!isBigEndian && magic == format::kMagic64 && IsFor(wanted.processor, cpuType, cpuSubtype) &&
        IsOf(wanted.kind, fileType))
        return;
    throw LoadError(std::string("it is a ") + (isBigEndian ? "big-endian " : "") +
                    (magic == format::kMagic64 ? "64-bit " : "32-bit ") + FileTypeName(fileType) + " for " +
                    ProcessorName(cpuType, cpuSubtype) + Needed(wanted));
}

/// The image for one processor in a universal file.
struct Slice {
    uint32_t cpuType, cpuSubtype;
    Bytes content;
};

/// Reads numbers of a universal file's table, which are big-endian.
uint64_t NextNumber(Cursor &cursor, bool isWide)
{
    return isWide ? __builtin_bswap64(cursor.Next<uint64_t>()) : __builtin_bswap32(cursor.Next<uint32_t>());
}

Slice ReadSlice(Cursor &cursor, bool isWide, Bytes file)
{
    /// Linkers align to no more.
    constexpr uint32_t kHighestAlignmentShift = 15;
    Slice slice = {};
    slice.cpuType = static_cast<uint32_t>(NextNumber(cursor, false));
    slice.cpuSubtype = static_cast<uint32_t>(NextNumber(cursor, false));
    const uint64_t offset = NextNumber(cursor, isWide);
    const uint64_t size = NextNumber(cursor, isWide);
    const uint64_t alignmentShift = NextNumber(cursor, false);
    if (isWide)
        cursor.Next<uint32_t>();
    const std::string what = "slice for " + ProcessorName(slice.cpuType, slice.cpuSubtype);
    slice.content = file.Slice(offset, size, what);
    if (alignmentShift > kHighestAlignmentShift || offset % (uint64_t{1} << alignmentShift) != 0)
        throw LoadError(what + ": begins at " + Hex(offset) + ", which is not aligned to 2^" +
                        std::to_string(alignmentShift));
    return slice;
}

std::vector<Slice> ReadSlices(Bytes file, bool isWide, Wanted wanted)
{
    /// Java's class files begin with the same word; their version, of 45 or more, stands in place of the
    /// count.
    constexpr uint64_t kMostSlices = 44;
    Cursor cursor(file, "universal header", sizeof(uint32_t));
    const uint64_t count = NextNumber(cursor, false);
    if (count > kMostSlices)
        throw LoadError("it is no universal file, or one of " + std::to_string(count) + " slices" +
                        Needed(wanted));
    std::vector<Slice> slices;
    for (uint64_t i = 0; i < count; ++i)
        slices.push_back(ReadSlice(cursor, isWide, file));
    const Bytes table = file.Slice(0, cursor.Position(), "universal header");
    for (auto slice = slices.begin(); slice != slices.end(); ++slice) {
        if (slice->content.Overlaps(table) || std::any_of(slices.begin(), slice, [&](const Slice &other) {
                return slice->content.Overlaps(other.content);
            }))
            throw LoadError("slice for " + ProcessorName(slice->cpuType, slice->cpuSubtype) +
                            ": overlaps another part of the file");
    }
    return slices;
}

Bytes ChooseSlice(const std::vector<Slice> &slices, Wanted wanted)
{
    std::string processors;
    for (const Slice &slice : slices) {
        if (IsFor(wanted.processor, slice.cpuType, slice.cpuSubtype))
            return slice.content;
        processors += (processors.empty() ? "" : ", ") + ProcessorName(slice.cpuType, slice.cpuSubtype);
    }
    throw LoadError("it is a universal file for " + (processors.empty() ? "no processor" : processors) +
                    Needed(wanted));
}

} // namespace

bool IsMachOMagic(uint32_t word)
{
    const uint32_t swapped = __builtin_bswap32(word);
    for (const uint32_t magic :
         {format::kMagic32, format::kMagic64, format::kUniversalMagic, format::kUniversalMagic64}) {
        if (word == magic || swapped == magic)
            return true;
    }
    return false;
}

Bytes FindImage(Bytes file, Processor processor, ImageKind kind)
{
    const Wanted wanted = {processor, kind};
    const auto word = file.Read<uint32_t>(0, "header");
    if (word == format::kUniversalMagic || word == format::kUniversalMagic64)
        throw LoadError("it is a universal file with a little-endian header" + Needed(wanted));
    const uint32_t universalMagic = __builtin_bswap32(word);
    const bool isWide = universalMagic == format::kUniversalMagic64;
    const bool isUniversal = isWide || universalMagic == format::kUniversalMagic;
    const Bytes image = isUniversal ? ChooseSlice(ReadSlices(file, isWide, wanted), wanted) : file;
    RequireLoadable(image, wanted);
    return image;
}

void RequireMacos(const std::vector<uint32_t> &platforms)
{
    // Old images name none, and some are built for another beside macOS.
    if (!platforms.empty() &&
        std::find(platforms.begin(), platforms.end(), format::platform::Macos) == platforms.end())
        throw LoadError("image: is built for " + PlatformName(platforms.front()) + ", not for macOS");
}

} // namespace macho

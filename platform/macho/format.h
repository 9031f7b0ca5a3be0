// The Mach-O file format, as far as dylibs and executables for x86-64 and arm64 use it: the structures in the
// file, and their codes.
#pragma once

#include <cstdint>

namespace macho::format {

inline constexpr uint32_t kMagic32 = 0xFEEDFACE, kMagic64 = 0xFEEDFACF;
// Universal files begin with one of these, and with the number of their slices. Both are big-endian.
inline constexpr uint32_t kUniversalMagic = 0xCAFEBABE, kUniversalMagic64 = 0xCAFEBABF;

inline constexpr uint32_t kCpuX86_64 = 0x01000007, kCpuArm64 = 0x0100000C;
inline constexpr uint32_t kCpuSubtypeFlags = 0xFF000000, kCpuSubtypeX86_64All = 3, kCpuSubtypeArm64All = 0;
inline constexpr uint32_t kFileExecutable = 2, kFileDylib = 6, kFileBundle = 8;
/// The header's flag: the image may lie anywhere.
inline constexpr uint32_t kFlagPositionIndependent = 0x200000;

struct Header {
    uint32_t magic, cpuType, cpuSubtype, fileType, commandCount, commandBytes, flags, reserved;
};

namespace command {
inline constexpr uint32_t Required = 0x80000000;
inline constexpr uint32_t Symtab = 0x2, UnixThread = 0x5, Dysymtab = 0xB, LoadDylib = 0xC, IdDylib = 0xD,
                          LoadDylinker = 0xE, Segment64 = 0x19, Uuid = 0x1B, FunctionStarts = 0x26,
                          DataInCode = 0x29, VersionMinMacos = 0x24, VersionMinIos = 0x25,
                          VersionMinTvos = 0x2F, VersionMinWatchos = 0x30, SourceVersion = 0x2A,
                          CodeSignature = 0x1D, BuildVersion = 0x32, LoadWeakDylib = 0x18 | Required,
                          Rpath = 0x1C | Required, Main = 0x28 | Required, DyldInfo = 0x22,
                          DyldInfoOnly = 0x22 | Required, ExportsTrie = 0x33 | Required,
                          ChainedFixups = 0x34 | Required;
} // namespace command

struct Command {
    uint32_t command, size;
};

struct SegmentCommand {
    Command header;
    char name[16];
    uint64_t address, size, fileOffset, fileSize;
    uint32_t maximalProtection, initialProtection, sectionCount, flags;
};

/// The segment's flag: it is not written to once its pointers are set.
inline constexpr uint32_t kSegmentReadOnly = 0x10;

struct Section {
    char name[16], segment[16];
    uint64_t address, size;
    uint32_t offset, alignment, relocationOffset, relocationCount, flags, reserved1, reserved2, reserved3;
};

namespace section {
inline constexpr uint32_t TypeMask = 0xFF, ZeroFill = 1, LazySymbolPointers = 7, ModInitFunctions = 9,
                          ThreadLocalRegular = 0x11, ThreadLocalInitFunctions = 0x15, InitOffsets = 0x16;
} // namespace section

struct DylibCommand {
    Command header;
    uint32_t nameOffset, timestamp, currentVersion, compatibilityVersion;
};

struct BuildVersionCommand {
    Command header;
    uint32_t platform, minimalVersion, sdkVersion, toolCount;
};

namespace platform {
inline constexpr uint32_t Macos = 1, Ios = 2, Tvos = 3, Watchos = 4;
} // namespace platform

struct DyldInfoCommand {
    Command header;
    uint32_t rebaseOffset, rebaseSize, bindOffset, bindSize, weakBindOffset, weakBindSize, lazyBindOffset,
        lazyBindSize, exportOffset, exportSize;
};

struct MainCommand {
    Command header;
    /// From the image's header.
    uint64_t entryOffset;
    uint64_t stackSize;
};

struct LinkeditDataCommand {
    Command header;
    uint32_t offset, size;
};

// The opcodes of LC_DYLD_INFO: the upper four bits; the lower four are an operand.

inline constexpr uint8_t kOpcodeMask = 0xF0, kOperandMask = 0x0F;
inline constexpr uint8_t kTypePointer = 1;

namespace rebase {
inline constexpr uint8_t Done = 0x00, SetType = 0x10, SetSegmentAndOffset = 0x20, AddAddress = 0x30,
                         AddAddressScaled = 0x40, DoTimes = 0x50, DoTimesLeb = 0x60, DoAddAddress = 0x70,
                         DoTimesSkipping = 0x80;
} // namespace rebase

namespace bind {
inline constexpr uint8_t Done = 0x00, SetOrdinal = 0x10, SetOrdinalLeb = 0x20, SetSpecialOrdinal = 0x30,
                         SetSymbol = 0x40, SetType = 0x50, SetAddend = 0x60, SetSegmentAndOffset = 0x70,
                         AddAddress = 0x80, Do = 0x90, DoAddAddress = 0xA0, DoAddAddressScaled = 0xB0,
                         DoTimesSkipping = 0xC0;
inline constexpr uint8_t FlagWeakImport = 1;
} // namespace bind

// Chained fixups.

struct ChainedFixupsHeader {
    uint32_t version, startsOffset, importsOffset, symbolsOffset, importCount, importsFormat, symbolsFormat;
};

inline constexpr uint32_t kChainedImport = 1, kChainedImportAddend = 2, kChainedImportAddend64 = 3;
inline constexpr uint16_t kPointer64 = 2, kPointer64Offset = 6;
inline constexpr uint16_t kChainEnd = 0xFFFF, kChainMulti = 0x8000;

struct ChainedStartsInSegment {
    uint32_t size;
    uint16_t pageSize, pointerFormat;
    uint64_t segmentOffset;
    uint32_t maximalValidPointer;
    uint16_t pageCount;
    // uint16_t pageStarts[pageCount] follow.
};
static_assert(sizeof(ChainedStartsInSegment) == 24, "the page starts begin 22 bytes in");
inline constexpr uint64_t kPageStartsOffset = 22;

// The flags in the export trie that the loader supports.
inline constexpr uint64_t kExportRegular = 0, kExportWeak = 4;

} // namespace macho::format

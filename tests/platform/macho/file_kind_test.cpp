// Dylibs, bundles, executables and slices for the processor are read; of other Mach-O files the message says
// what they are.
#include "platform/macho/file_kind.h"

#include <gmock/gmock.h>

#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/load_error.h"

using macho::Bytes;
using macho::ImageKind;
using macho::Processor;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr uint32_t kX64 = 0x01000007, kArm64 = 0x0100000C, kI386 = 7;

/// The type and the subtype in the header of an image for the processor.
std::pair<uint32_t, uint32_t> CodesOf(Processor processor)
{
    return processor == Processor::X86_64 ? std::pair(kX64, 3U) : std::pair(kArm64, 0U);
}

/// The end of the message about a file that has no image for the processor.
std::string Needed(Processor processor)
{
    return "; a 64-bit dylib or bundle for " + NameOf(processor) + " is needed";
}

std::string KindError(const std::vector<char> &file, Processor processor = Processor::X86_64,
                      ImageKind kind = ImageKind::Library)
{
    const std::vector<char> copy(file);
    return ErrorFrom([&] { macho::FindImage(Bytes(copy.data(), copy.size()), processor, kind); });
}

/// The bytes of words, as a little-endian or a big-endian processor writes them.
std::vector<char> Words(const std::vector<uint32_t> &words, bool isBigEndian = false)
{
    std::vector<char> bytes(words.size() * sizeof(uint32_t));
    for (size_t i = 0; i < words.size(); ++i)
        Write(bytes, i * sizeof(uint32_t), isBigEndian ? __builtin_bswap32(words[i]) : words[i]);
    return bytes;
}

/// A universal file of 0x3000 bytes, whose header has these words.
std::vector<char> Universal(const std::vector<uint32_t> &header)
{
    std::vector<char> file = Words(header, true);
    file.resize(0x3000);
    return file;
}

int AnswerOf(const std::string &path)
{
    return reinterpret_cast<int (*)()>(macho::FindSymbol(macho::LoadDylib(path), "answer"))();
}

} // namespace

TEST(FileKind, ThatIsNoMachOFileIsNotLoaded)
{
    EXPECT_THAT(KindError(Words({0x464C457F, 0, 0, 0})), HasSubstr("it is no Mach-O file"));
    EXPECT_THAT(KindError({'\xFE'}), HasSubstr("header: 0x4 bytes at 0x0 are beyond the end at 0x1"));
}

TEST(FileKind, OfEachTypeIsNamed)
{
    const std::pair<uint32_t, const char *> types[] = {
        {1, "object file"},
        {2, "executable"},
        {3, "library at a fixed address"},
        {4, "core file"},
        {5, "preloaded executable"},
        {7, "dynamic linker"},
        {9, "stub of a dylib"},
        {10, "debugging companion (dSYM)"},
        {11, "driver (kernel extension)"},
        {12, "set of kernel files"},
        {99, "file of type 0x63"},
    };
    for (const Processor processor : kProcessors) {
        const auto [cpu, subtype] = CodesOf(processor);
        for (const auto &[type, name] : types)
            EXPECT_EQ(KindError(Words({0xFEEDFACF, cpu, subtype, type}), processor),
                      std::string("it is a 64-bit ") + name + " for " + NameOf(processor) +
                          Needed(processor));
        EXPECT_EQ(KindError(Words({0xFEEDFACF, cpu, subtype, 6}), processor), "");
        EXPECT_EQ(KindError(Words({0xFEEDFACF, cpu, subtype, 8}), processor), "");
        // Flags stand in the upper bits of a subtype.
        EXPECT_EQ(KindError(Words({0xFEEDFACF, cpu, 0x80000000 | subtype, 6}), processor), "");
    }
}

TEST(FileKind, OfAProgramIsAnExecutable)
{
    for (const Processor processor : kProcessors) {
        const std::pair<uint32_t, uint32_t> codes = CodesOf(processor);
        const std::string needed = "; a 64-bit executable for " + NameOf(processor) + " is needed";
        const auto errorOf = [&](uint32_t type) {
            return KindError(Words({0xFEEDFACF, codes.first, codes.second, type}), processor,
                             ImageKind::Program);
        };
        EXPECT_EQ(errorOf(2), "");
        EXPECT_EQ(errorOf(6), "it is a 64-bit dylib for " + NameOf(processor) + needed);
        EXPECT_EQ(errorOf(8), "it is a 64-bit bundle for " + NameOf(processor) + needed);
        EXPECT_EQ(KindError(Universal({0xCAFEBABE, 0}), processor, ImageKind::Program),
                  "it is a universal file for no processor" + needed);
    }
}

TEST(FileKind, ForOtherProcessorsIsNamed)
{
    const std::tuple<uint32_t, uint32_t, const char *> processors[] = {
        {kX64, 8, "x86-64h"},           {kX64, 0x63, "x86-64 of the subtype 0x63"},
        {kArm64, 0x80000002, "arm64e"}, {kArm64, 1, "arm64 of the subtype 0x1"},
        {0x0200000C, 1, "arm64_32"},    {99, 0, "a processor of type 0x63"},
    };
    for (const Processor processor : kProcessors) {
        for (const auto &[type, subtype, name] : processors)
            EXPECT_EQ(KindError(Words({0xFEEDFACF, type, subtype, 6}), processor),
                      std::string("it is a 64-bit dylib for ") + name + Needed(processor));
    }
    EXPECT_EQ(KindError(Words({0xFEEDFACF, kArm64, 0, 6}), Processor::X86_64),
              "it is a 64-bit dylib for arm64; a 64-bit dylib or bundle for x86-64 is needed");
    EXPECT_EQ(KindError(Words({0xFEEDFACF, kX64, 3, 6}), Processor::Arm64),
              "it is a 64-bit dylib for x86-64; a 64-bit dylib or bundle for arm64 is needed");
}

TEST(FileKind, OfOtherWordsIsNamed)
{
    EXPECT_THAT(KindError(Words({0xFEEDFACE, kI386, 3, 8})), HasSubstr("it is a 32-bit bundle for i386;"));
    EXPECT_THAT(KindError(Words({0xFEEDFACE, 18, 0, 2}, true)),
                HasSubstr("it is a big-endian 32-bit executable for ppc;"));
    EXPECT_THAT(KindError(Words({0xFEEDFACF, 0x01000012, 0, 6}, true)),
                HasSubstr("it is a big-endian 64-bit dylib for ppc64;"));
    EXPECT_THAT(KindError(Words({0xCAFEBABE, 0})),
                HasSubstr("it is a universal file with a little-endian header;"));
}

TEST(FileKind, OfEveryMachOFileIsRecognised)
{
    for (const uint32_t magic : {0xFEEDFACE, 0xFEEDFACF, 0xCAFEBABE, 0xCAFEBABF}) {
        for (const bool isBigEndian : {false, true}) {
            const TemporaryFile file(Words({magic}, isBigEndian));
            EXPECT_TRUE(macho::IsMachO(file.Path())) << magic;
        }
    }
    for (const char *text : {"", "\xFE\xED\xFA",
                             "\x7F"
                             "ELF",
                             "text"}) {
        const TemporaryFile file(std::vector<char>(text, text + std::strlen(text)));
        EXPECT_FALSE(macho::IsMachO(file.Path())) << text;
    }
}

TEST(FileKind, BundlesAreLoaded)
{
    std::vector<char> file = FileOf("fixups_opcodes");
    Write(file, 12, macho::format::kFileBundle);
    EXPECT_EQ(AnswerOf(TemporaryFile(file).Path()), 42);
}

TEST(UniversalFile, IsLoadedByTheSliceThatFits)
{
    EXPECT_EQ(AnswerOf(std::string(TEST_DYLIBS) + "/universal.dylib"), 42);
}

TEST(UniversalFile, HasAnImageForEachProcessor)
{
    const std::vector<char> file = BuiltFile("universal.dylib");
    for (const Processor processor : kProcessors) {
        const Bytes image = macho::FindImage(Bytes(file.data(), file.size()), processor, ImageKind::Library);
        EXPECT_EQ(std::vector<char>(image.Data(), image.Data() + image.Size()),
                  FileOf("fixups_opcodes", processor));
    }
}

TEST(UniversalFile, WithWideNumbersIsLoadedByTheSliceThatFits)
{
    const auto [cpu, subtype] = CodesOf(macho::kThisProcessor);
    std::vector<char> file = Words({0xCAFEBABF, 2, 0x01000012, 0, 0, 0x4000, 0, 0x4000, 14, 0, //
                                    cpu, subtype, 0, 0x8000, 0, 0, 14, 0},
                                   true);
    const std::vector<char> dylib = FileOf("fixups_opcodes");
    Write(file, 60, __builtin_bswap32(static_cast<uint32_t>(dylib.size())));
    file.resize(0x8000);
    file.insert(file.end(), dylib.begin(), dylib.end());
    EXPECT_EQ(AnswerOf(TemporaryFile(file).Path()), 42);
}

TEST(UniversalFile, ThatIsCutOffIsRefused)
{
    const std::vector<char> file = BuiltFile("universal.dylib");
    ASSERT_EQ(KindError(file), "");
    for (const size_t size :
         {size_t{3}, size_t{7}, size_t{8}, size_t{20}, size_t{40}, size_t{0x1000}, file.size() - 1})
        EXPECT_THAT(
            KindError(std::vector<char>(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size))),
            HasSubstr("beyond the end"))
            << size;
}

TEST(UniversalFile, WithoutASliceThatFitsSaysWhichItHas)
{
    for (const Processor processor : kProcessors) {
        EXPECT_EQ(KindError(Universal({0xCAFEBABE, 3, kI386, 3, 0x1000, 0x100, 12, kArm64, 2, 0x2000, 0x100,
                                       12, kX64, 8, 0x2800, 0x100, 11}),
                            processor),
                  "it is a universal file for i386, arm64e, x86-64h" + Needed(processor));
        EXPECT_EQ(KindError(Universal({0xCAFEBABE, 0}), processor),
                  "it is a universal file for no processor" + Needed(processor));
    }
    EXPECT_EQ(KindError(Universal({0xCAFEBABE, 1, kX64, 3, 0x1000, 0x100, 12}), Processor::Arm64),
              "it is a universal file for x86-64; a 64-bit dylib or bundle for arm64 is needed");
}

TEST(UniversalFile, WhoseSliceIsOfAnotherKindIsRefused)
{
    const std::vector<uint32_t> header = {0xCAFEBABE, 1, kX64, 3, 0x1000, 0x100, 12};
    std::vector<char> file = Universal(header);
    EXPECT_THAT(KindError(file), HasSubstr("it is no Mach-O file;"));
    const std::vector<char> executable = Words({0xFEEDFACF, kX64, 3, 2});
    std::copy(executable.begin(), executable.end(), file.begin() + 0x1000);
    EXPECT_THAT(KindError(file), HasSubstr("it is a 64-bit executable for x86-64;"));
    const std::vector<char> universal = Universal(header);
    std::copy(universal.begin(), universal.begin() + 0x100, file.begin() + 0x1000);
    EXPECT_THAT(KindError(file), HasSubstr("it is no Mach-O file;"));
}

TEST(UniversalFile, WithWrongSlicesIsRefused)
{
    const auto errorOf = [](uint32_t offset, uint32_t size, uint32_t alignment) {
        return KindError(Universal({0xCAFEBABE, 2, kX64, 3, 0x1000, 0x1000, 12, //
                                    kArm64, 0, offset, size, alignment}));
    };
    EXPECT_THAT(errorOf(0x2000, 0x1001, 12), HasSubstr("slice for arm64: 0x1001 bytes at 0x2000 are beyond"));
    EXPECT_THAT(errorOf(0xFFFFF000, 0x2000, 12), HasSubstr("slice for arm64: 0x2000 bytes at 0xfffff000"));
    EXPECT_THAT(errorOf(0x2004, 0x100, 12), EndsWith("begins at 0x2004, which is not aligned to 2^12"));
    EXPECT_THAT(errorOf(0, 0, 16), EndsWith("begins at 0x0, which is not aligned to 2^16"));
    EXPECT_THAT(errorOf(0, 0, 0xFFFFFFFF), EndsWith("which is not aligned to 2^4294967295"));
    EXPECT_THAT(errorOf(0x1800, 0x100, 8), HasSubstr("slice for arm64: overlaps another part of the file"));
    EXPECT_THAT(errorOf(0x2C, 0x100, 2), HasSubstr("slice for arm64: overlaps another part of the file"));
    EXPECT_THAT(KindError(Universal({0xCAFEBABF, 1, kArm64, 0, 0xFFFFFFFF, 0xFFFFF000, 0, 0x2000, 12, 0})),
                HasSubstr("0x2000 bytes at 0xfffffffffffff000 are beyond the end"));
}

TEST(UniversalFile, IsToldFromAClassOfJava)
{
    EXPECT_THAT(KindError(Universal({0xCAFEBABE, 45})),
                HasSubstr("it is no universal file, or one of 45 slices;"));
}

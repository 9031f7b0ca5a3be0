// Files that are cut off, or broken on purpose, are refused with a message, and never read beyond their end.
#include <gmock/gmock.h>

#include <random>

#include "platform/macho/image_reader.h"
#include "platform/macho/unwind_info.h"
#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/load_error.h"

using macho::Bytes;
using macho::ImageKind;
using macho::Processor;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// The files that are cut off and broken, for each processor.
struct HostileImage {
    const char *name;
    ImageKind kind;
};
constexpr HostileImage kImages[] = {
    {"objects.dylib", ImageKind::Library},
    {"fixups_opcodes.dylib", ImageKind::Library},
    {"fixups_chained.dylib", ImageKind::Library},
    {"objc_exceptions.dylib", ImageKind::Library},
    {"cxx_exceptions.dylib", ImageKind::Library},
    {"cxx_exceptions_frameless.dylib", ImageKind::Library},
    {"program", ImageKind::Program},
    {"pointers_chained", ImageKind::Program},
};

/// Reads everything that is read before an image is mapped. Returns the error; empty without one.
std::string ErrorOf(const std::vector<char> &file, Processor processor = Processor::X86_64,
                    ImageKind kind = ImageKind::Library)
{
    // A copy of exactly its size, so that the address sanitizer sees a read beyond it.
    const std::vector<char> copy(file);
    return ErrorFrom([&] {
        const macho::Image image = macho::ParseImage(Bytes(copy.data(), copy.size()), processor, kind);
        macho::ReadUnwindInfo(image);
    });
}

/// A number to write into a file, and a part of the error that it causes.
struct Damage {
    size_t offset;
    uint32_t value;
    const char *message;
};

void ExpectRefusals(const std::vector<char> &file, const std::vector<Damage> &damages,
                    Processor processor = Processor::X86_64)
{
    for (const Damage &damage : damages) {
        SCOPED_TRACE(damage.message);
        std::vector<char> broken = file;
        Write(broken, damage.offset, damage.value);
        EXPECT_THAT(ErrorOf(broken, processor), HasSubstr(damage.message));
    }
}

class HostileFile : public testing::TestWithParam<std::tuple<Processor, HostileImage>> {
protected:
    const Processor processor = std::get<0>(GetParam());
    const HostileImage image = std::get<1>(GetParam());
    const std::vector<char> file = BuiltFile(FolderOf(processor) + "/" + image.name);
};

class HostileCommands : public testing::TestWithParam<Processor> {};

} // namespace

TEST_P(HostileFile, ThatIsWholeIsRead)
{
    EXPECT_EQ(ErrorOf(file, processor, image.kind), "");
}

TEST_P(HostileFile, ThatIsCutOffIsRefused)
{
    const macho::Image parsed = macho::ParseImage(Bytes(file.data(), file.size()), processor, image.kind);
    size_t lastByte = 0;
    for (const macho::Segment &segment : parsed.segments)
        lastByte = std::max(lastByte, static_cast<size_t>(segment.content.Data() -
                                                          reinterpret_cast<const uint8_t *>(file.data())) +
                                          segment.content.Size());
    ASSERT_EQ(lastByte, file.size());
    for (size_t size = 0; size < file.size(); size += 1 + size / 64)
        EXPECT_NE(ErrorOf(std::vector<char>(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)),
                          processor, image.kind),
                  "")
            << size;
    EXPECT_NE(ErrorOf(std::vector<char>(file.begin(), file.end() - 1), processor, image.kind), "");
}

TEST_P(HostileFile, ThatIsBrokenAnywhereIsReadOrRefused)
{
    std::mt19937 random(20240229);
    constexpr uint32_t kValues[] = {0, 1, 0x7F, 0x80, 0xFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<char> broken = file;
        for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
            // Half of them in the header and the load commands.
            const size_t limit = (random() % 2 == 0 ? size_t{0x1000} : broken.size()) - sizeof(uint32_t);
            Write(broken, random() % limit, kValues[random() % std::size(kValues)]);
        }
        refused += ErrorOf(broken, processor, image.kind).empty() ? 0 : 1;
    }
    EXPECT_GT(refused, 100);
}

INSTANTIATE_TEST_SUITE_P(Images, HostileFile,
                         testing::Combine(testing::ValuesIn(kProcessors), testing::ValuesIn(kImages)),
                         [](const auto &info) {
                             const std::string name = std::get<1>(info.param).name;
                             return FolderOf(std::get<0>(info.param)) + "_" + name.substr(0, name.find('.'));
                         });

TEST(HostileHeader, OfAnotherKindIsRefused)
{
    const std::vector<Damage> damages = {
        {0, 0xFEEDFACE, "it is a 32-bit dylib for x86-64; a 64-bit dylib or bundle for x86-64 is needed"},
        {0, 0x464C457F, "it is no Mach-O file"},
        {4, 0x0100000C, "it is a 64-bit dylib for arm64"},
        {8, 8, "it is a 64-bit dylib for x86-64h"},
        {12, 2, "it is a 64-bit executable for x86-64"},
        {16, 0xFFFF, "load command"},
        {20, 0xFFFFFFFF, "load commands: 0xffffffff bytes at 0x20 are beyond the end"},
    };
    ExpectRefusals(FileOf("objects", Processor::X86_64), damages);
    std::vector<char> large = FileOf("objects", Processor::X86_64);
    large.resize(0x200000);
    ExpectRefusals(large, {{20, 0x100001, "load commands: are too large"}});
    EXPECT_THAT(ErrorOf({}), HasSubstr("header: 0x4 bytes at 0x0 are beyond the end at 0x0"));
}

TEST(HostilePlatform, OtherThanMacosIsRefused)
{
    namespace command = macho::format::command;
    std::vector<char> file = FileOf("fixups_chained", Processor::X86_64);
    const size_t platform = CommandOffset(file, command::BuildVersion) + 8;
    ExpectRefusals(file, {{platform, 2, "image: is built for iOS, not for macOS"},
                          {platform, 6, "image: is built for Mac Catalyst, not for macOS"},
                          {platform, 7, "image: is built for the simulator of iOS, not for macOS"},
                          {platform, 12, "image: is built for the simulator of visionOS, not for macOS"},
                          {platform, 0, "image: is built for platform 0, not for macOS"},
                          {platform, 99, "image: is built for platform 99, not for macOS"}});

    const std::vector<char> older = FileOf("objects", Processor::X86_64);
    const size_t version = CommandOffset(older, command::VersionMinMacos);
    ExpectRefusals(older,
                   {{version, command::VersionMinIos, "image: is built for iOS, not for macOS"},
                    {version, command::VersionMinTvos, "image: is built for tvOS, not for macOS"},
                    {version, command::VersionMinWatchos, "image: is built for watchOS, not for macOS"}});
}

TEST(HostilePlatform, BesideMacosIsRead)
{
    namespace command = macho::format::command;
    std::vector<char> file = FileOf("fixups_chained", Processor::X86_64);
    // Another command of the same size.
    const size_t other = CommandOffset(file, command::Uuid);
    Write(file, other, command::BuildVersion);
    Write(file, other + 8, 6);
    EXPECT_EQ(ErrorOf(file), "");
}

TEST(HostileLazyPointers, WithoutABindAreRefused)
{
    for (const Processor processor : kProcessors) {
        std::vector<char> file = FileOf("fixups_opcodes", processor);
        const size_t info = CommandOffset(file, macho::format::command::DyldInfoOnly);
        const char *const error = "section __DATA,__la_symbol_ptr: the lazy pointer at ";
        // Without lazy binds, they lead to the stub helper; without rebases too, to nowhere.
        Write(file, info + 36, 0);
        EXPECT_THAT(ErrorOf(file, processor), AllOf(HasSubstr(error), EndsWith("is bound to nothing")));
        Write(file, info + 12, 0);
        EXPECT_THAT(ErrorOf(file, processor), HasSubstr(error));
    }
}

TEST_P(HostileCommands, AreRefusedWithTheirNames)
{
    namespace command = macho::format::command;
    const auto processor = GetParam();
    const std::vector<char> file = FileOf("objects", processor);
    const size_t segment = CommandOffset(file, command::Segment64);
    const size_t info = CommandOffset(file, command::DyldInfoOnly);
    const size_t dylib = CommandOffset(file, command::LoadDylib);
    const std::vector<Damage> damages = {
        {segment + 4, 7, "load command 0: has a wrong size"},
        {segment + 4, 0x7FFFFFF8, "load command 0: 0x7ffffff8 bytes at 0x0 are beyond the end"},
        {segment, 0x99, "load command 0x99 is not supported"},
        {segment + 24, 0x123, "segment __TEXT: does not begin at a page"},
        {segment + 28, 0x7FFFFFFF, "segment __TEXT: is too large or too high"},
        {segment + 32, 0x1000, "segment __TEXT: has more in the file than in memory"},
        {segment + 36, 0x7FFFFFFF, "segment __TEXT: is too large or too high"},
        {segment + 40, 0x7FFFFFFF, "segment __TEXT"},
        {segment + 48, 0x7FFFFFFF, "segment __TEXT"},
        {segment + 60, 7, "segment __TEXT: is writable and executable"},
        {segment + 64, 0xFFFF, "segment __TEXT: 0x50 bytes at"},
        {segment + 72 + 32, 0x7FFFFFFF, "lies outside its segment"},
        {segment + 72 + 48, 0x20, "its offset in the file is not that of its address"},
        {segment + 72 + 64, macho::format::section::ThreadLocalRegular,
         "thread-local variables are not supported"},
        {info + 8, 0x7FFFFFFF, "rebase table: "},
        {info + 12, 0x7FFFFFFF, "rebase table: "},
        {info + 16, 0x7FFFFFFF, "bind table: "},
        {info + 32, 0x7FFFFFFF, "lazy bind table: "},
        {info + 40, 0x7FFFFFFF, "exports trie: "},
        {dylib + 8, 0x7FFFFFFF, "dylib command: "},
        {dylib + 24, 0, "dylib command: the name of the library is empty"},
        {segment + 72 + 16, 0x4A325B1B, "section \\x1b[2JXT"},
    };
    ExpectRefusals(file, damages, processor);
}

INSTANTIATE_TEST_SUITE_P(Dylibs, HostileCommands, testing::ValuesIn(kProcessors),
                         [](const auto &info) { return FolderOf(info.param); });

TEST(HostileSegments, BeginAtThePagesOfTheirProcessor)
{
    const std::vector<char> file = FileOf("objects", Processor::Arm64);
    const size_t segment = CommandOffset(file, macho::format::command::Segment64);
    ExpectRefusals(file, {{segment + 24, 0x1000, "segment __TEXT: does not begin at a page"}},
                   Processor::Arm64);
}

TEST(HostileChains, ForPointersThatAreSignedAreRefused)
{
    const std::vector<char> file = FileOf("fixups_chained", Processor::Arm64);
    const size_t command = CommandOffset(file, macho::format::command::ChainedFixups);
    const Bytes bytes(file.data(), file.size());
    const auto table = bytes.Read<uint32_t>(command + 8, "command");
    const auto starts = table + bytes.Read<uint32_t>(table + 4, "header");
    // The first segment whose pointers are set.
    const auto count = bytes.Read<uint32_t>(starts, "starts");
    for (uint32_t i = 0; i < count; ++i) {
        const auto offset = bytes.Read<uint32_t>(starts + 4 + 4 * i, "starts");
        if (offset == 0)
            continue;
        // Their format, of 16 bits, lies behind the size of the pages.
        ExpectRefusals(file, {{starts + offset + 6, 1, "pointer format 1 is not supported"}},
                       Processor::Arm64);
        return;
    }
    FAIL() << "no segment has pointers";
}

TEST(HostileSections, ThatOverlapAreRefused)
{
    std::vector<char> file = FileOf("objects", Processor::X86_64);
    const auto sections = file.begin() + static_cast<std::ptrdiff_t>(
                                             CommandOffset(file, macho::format::command::Segment64) + 72);
    // The second gets the first one's address, size and offset.
    std::copy(sections + 32, sections + 52, sections + 80 + 32);
    EXPECT_THAT(ErrorOf(file), HasSubstr("section __TEXT,__stubs: overlaps the one before it"));
}

TEST(HostileTrie, WithACircleIsRefused)
{
    std::vector<char> file = FileOf("objects", Processor::X86_64);
    const size_t info = CommandOffset(file, macho::format::command::DyldInfoOnly);
    uint32_t trie = 0;
    std::memcpy(&trie, &file.at(info + 40), sizeof trie);
    // A node without an export and with one edge "a", to itself.
    const char circle[] = {0, 1, 'a', 0, 0};
    std::copy(std::begin(circle), std::end(circle), file.begin() + trie);
    EXPECT_THAT(ErrorOf(file), HasSubstr("exports trie: two edges lead to one node"));
}

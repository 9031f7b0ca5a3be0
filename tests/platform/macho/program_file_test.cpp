// Main executables are read for either processor; those that cannot be run here are refused.
#include <gmock/gmock.h>

#include <algorithm>

#include "platform/macho/image_reader.h"
#include "platform/macho/unwind_info.h"
#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/load_error.h"

using macho::Bytes;
using macho::Image;
using macho::ImageKind;
using macho::Processor;
using testing::EndsWith;

namespace {

namespace command = macho::format::command;

/// Where the linker puts executables, above a segment that is as large as this.
constexpr uint64_t kBase = 0x100000000;

class ProgramFile : public testing::TestWithParam<Processor> {
protected:
    const Processor processor = GetParam();
    std::vector<char> file = BuiltFile(FolderOf(processor) + "/program");

    Image Parsed() const
    {
        return macho::ParseImage(Bytes(file.data(), file.size()), processor, ImageKind::Program);
    }

    std::string Error() const
    {
        return ErrorFrom([&] { Parsed(); });
    }

    /// The error once a number is written into the file, which stays as it is.
    template <typename T>
    std::string ErrorWith(size_t offset, T value)
    {
        const std::vector<char> whole = file;
        Write(file, offset, value);
        const std::string error = Error();
        file = whole;
        return error;
    }
};

} // namespace

TEST_P(ProgramFile, BeginsWithItsHeaderBehindAddressesThatNobodyUses)
{
    const Image image = Parsed();
    ASSERT_EQ(image.segments.front().name, "__PAGEZERO");
    EXPECT_EQ(image.segments.front().size, kBase);
    EXPECT_FALSE(image.segments.front().IsInMemory());
    EXPECT_THAT(ErrorFrom([&] { image.SegmentAt(0, 1, "a byte"); }), EndsWith("are in no segment"));
    EXPECT_EQ(image.begin, kBase);
    EXPECT_EQ(image.ContentAt(image.begin, 4, "header").Read<uint32_t>(0, "header"), macho::format::kMagic64);
    EXPECT_LT(image.end, kBase + 0x100000);
    ASSERT_NE(image.FindExport("__mh_execute_header"), nullptr);
    EXPECT_EQ(image.FindExport("__mh_execute_header")->address, kBase);
}

TEST_P(ProgramFile, HasItsMainFunctionAndItsUnwindEntriesAmongTheCode)
{
    const Image image = Parsed();
    const macho::Section *const code = image.FindSection("__TEXT", "__text");
    const std::vector<macho::UnwindEntry> entries = macho::ReadUnwindInfo(image);
    EXPECT_GT(entries.size(), 10u);
    for (const macho::UnwindEntry &entry : entries)
        EXPECT_LT(entry.begin - code->address, code->size);
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(),
                            [&](const macho::UnwindEntry &entry) { return entry.begin == image.entry; }));
}

TEST_P(ProgramFile, ThatMustLieAtItsAddressIsRefused)
{
    const size_t flags = offsetof(macho::format::Header, flags);
    const auto value = Bytes(file.data(), file.size()).Read<uint32_t>(flags, "header");
    EXPECT_EQ(ErrorWith(flags, value & ~uint32_t{0x200000}),
              "image: must lie at its address; only position-independent programs (MH_PIE) are supported");
}

TEST_P(ProgramFile, WithoutAMainFunctionIsRefused)
{
    const size_t main = CommandOffset(file, command::Main);
    EXPECT_EQ(ErrorWith(main, command::UnixThread),
              "image: sets registers to start (LC_UNIXTHREAD); only a main "
              "function (LC_MAIN) is supported");
    EXPECT_EQ(ErrorWith(main, command::SourceVersion), "image: has no main function (LC_MAIN)");
}

TEST_P(ProgramFile, WithItsMainFunctionElsewhereIsRefused)
{
    const size_t entry =
        CommandOffset(file, command::Main) + offsetof(macho::format::MainCommand, entryOffset);
    const Image image = Parsed();
    const macho::Section *const data = image.FindSection("__DATA", "__data");
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(ErrorWith(entry, data->address - kBase), "main function: lies outside the code");
    EXPECT_EQ(ErrorWith(entry, image.end - kBase), "main function: lies outside the image");
    EXPECT_EQ(ErrorWith(entry, ~uint64_t{0}), "main function: lies outside the image");
}

TEST_P(ProgramFile, WithItsMainFunctionBehindTheFilesBytesIsRefused)
{
    // The segments begin to have more memory than content.
    const size_t text = CommandOffset(file, command::Segment64) + sizeof(macho::format::SegmentCommand);
    const size_t size = text + offsetof(macho::format::SegmentCommand, size);
    const auto end = Bytes(file.data(), file.size()).Read<uint64_t>(size, "segment");
    const size_t entry =
        CommandOffset(file, command::Main) + offsetof(macho::format::MainCommand, entryOffset);
    const size_t sections = text + offsetof(macho::format::SegmentCommand, sectionCount);
    const size_t content = text + offsetof(macho::format::SegmentCommand, fileSize);
    Write(file, sections, uint32_t{0});
    Write(file, content, end - 0x100);
    Write(file, entry, end - 0x101);
    EXPECT_NE(Error(), "main function: lies outside the code");
    Write(file, entry, end - 0x100);
    EXPECT_EQ(Error(), "main function: lies outside the code");
}

TEST_P(ProgramFile, WhoseFirstSegmentLacksTheHeaderIsRefused)
{
    const size_t protection =
        CommandOffset(file, command::Segment64) + offsetof(macho::format::SegmentCommand, initialProtection);
    EXPECT_EQ(ErrorWith(protection, uint32_t{1}), "segment __PAGEZERO: does not begin with the header");
}

TEST_P(ProgramFile, IsNoDylibNorTheOtherWayRound)
{
    const std::string name = NameOf(processor);
    EXPECT_EQ(
        ErrorFrom([&] { macho::ParseImage(Bytes(file.data(), file.size()), processor, ImageKind::Library); }),
        "it is a 64-bit executable for " + name + "; a 64-bit dylib or bundle for " + name + " is needed");
    file = FileOf("objects", processor);
    EXPECT_EQ(Error(),
              "it is a 64-bit dylib for " + name + "; a 64-bit executable for " + name + " is needed");
}

INSTANTIATE_TEST_SUITE_P(Programs, ProgramFile, testing::ValuesIn(kProcessors),
                         [](const auto &info) { return FolderOf(info.param); });

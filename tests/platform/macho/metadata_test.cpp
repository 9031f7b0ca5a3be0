// Objective-C of a dylib that cannot work here is refused.
#include <gmock/gmock.h>

#include "platform/macho/image_reader.h"
#include "platform/macho/loader.h"
#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/load_error.h"

using macho::Bytes;
using macho::Processor;

namespace {

std::string ErrorOfVariadicMessages(Processor processor)
{
    const std::vector<char> file = FileOf("variadic_messages", processor);
    return ErrorFrom(
        [&] { macho::ParseImage(Bytes(file.data(), file.size()), processor, macho::ImageKind::Library); });
}

} // namespace

TEST(Metadata, WithMessagesOfVariableArgumentsIsRefusedForArm64)
{
    EXPECT_EQ(ErrorOfVariadicMessages(Processor::Arm64),
              "image: sends stringWithFormat:, which has a variable number "
              "of arguments; code for arm64 cannot do that here");
    EXPECT_EQ(ErrorOfVariadicMessages(Processor::X86_64), "");
}

TEST(Metadata, WithRelativePointersToMethodsIsRefused)
{
    std::vector<char> file = FileOf("objects");
    const macho::Image image =
        macho::ParseImage(Bytes(file.data(), file.size()), macho::kThisProcessor, macho::ImageKind::Library);
    const macho::Section *const lists = image.FindSection("__DATA", "__objc_const");
    ASSERT_NE(lists, nullptr);
    // The first list of methods, whose entries have 24 bytes.
    size_t offset = 0;
    while (lists->content.Read<uint32_t>(offset, "list") != 24)
        offset += sizeof(uint32_t);
    const auto *const start = reinterpret_cast<const char *>(lists->content.Data());
    Write(file, static_cast<size_t>(start - file.data()) + offset, uint32_t{0x80000000 | 12});
    const TemporaryFile changed(file);
    EXPECT_THAT(ErrorFrom([&] { macho::LoadDylib(changed.Path()); }),
                testing::HasSubstr("a list of methods has relative pointers, which are not supported"));
}

// Segments in memory have the protection that the image asks for.
#include "platform/macho/mapped_image.h"

#include <gmock/gmock.h>
#include <sys/mman.h>

#include "tests/platform/macho/load_error.h"
#include "tests/platform/macho/protection.h"

namespace {

/// An image of a segment of code and one of data, with a gap between them.
macho::Image TwoSegments(uint64_t secondAddress, bool isConstant)
{
    constexpr uint64_t kPage = 0x10000;
    macho::Image image;
    image.end = 3 * kPage;
    image.segments = {
        {"__TEXT", 0, kPage, {}, true, false, true, false},
        {"__DATA_CONST", secondAddress, image.end - secondAddress, {}, true, true, false, isConstant}};
    return image;
}

} // namespace

TEST(Segments, AreProtectedAsTheImageAsks)
{
    const macho::Image image = TwoSegments(0x20000, false);
    const macho::MappedImage memory(image);
    memory.Protect();
    EXPECT_EQ(ProtectionOf(memory.At(0)), "r-xp");
    EXPECT_EQ(ProtectionOf(memory.At(0x20000)), "rw-p");
}

TEST(Segments, OfConstantsCannotBeWrittenOnceTheirPointersAreSet)
{
    const macho::Image image = TwoSegments(0x20000, true);
    const macho::MappedImage memory(image);
    EXPECT_EQ(ProtectionOf(memory.At(0x20000)), "rw-p");
    memory.Protect();
    EXPECT_EQ(ProtectionOf(memory.At(0x20000)), "r--p");
}

TEST(Segments, ThatNobodyMayAccessAreNotInMemory)
{
    constexpr uint64_t kBase = 0x100000000;
    macho::Image image;
    image.segments = {{"__PAGEZERO", 0, kBase, {}, false, false, false, false},
                      {"__TEXT", kBase, 0x10000, {}, true, false, true, false}};
    image.begin = kBase;
    image.end = kBase + 0x10000;
    const macho::MappedImage memory(image);
    EXPECT_EQ(ErrorFrom([&] { memory.Protect(); }), "");
    EXPECT_EQ(ProtectionOf(memory.At(kBase)), "r-xp");
    EXPECT_EQ(memory.AddressOf(memory.At(kBase)), kBase);
}

TEST(Segments, ThatBeginWithinAPageOfThisSystemAreRefused)
{
    const macho::Image image = TwoSegments(0x20800, false);
    const macho::MappedImage memory(image);
    EXPECT_THAT(
        ErrorFrom([&] { memory.Protect(); }),
        testing::HasSubstr("segment __DATA_CONST: does not begin at a page of this system, which has 0x"));
}

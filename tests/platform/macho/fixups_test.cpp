// The pointers of a dylib are set, in whichever form the linker wrote them.
#include <gmock/gmock.h>

#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/load_error.h"
#include "tests/platform/macho/protection.h"

extern "C" const void *const kCFBooleanTrue;

using testing::HasSubstr;

namespace {

/// The same source, linked with opcodes and with chains.
class Fixups : public DylibTest, public testing::WithParamInterface<const char *> {
protected:
    void SetUp() override { Load(GetParam()); }
};

using MissingImports = DylibTest;
using ReplaceableFunctions = DylibTest;

} // namespace

TEST_P(Fixups, PointersIntoTheImageAreSet)
{
    const auto text = Find<const char *(size_t)>("textAt");
    EXPECT_STREQ(text(0), "one");
    EXPECT_STREQ(text(2), "three");
    EXPECT_EQ(Find<size_t()>("insideBig")(), 0x2FFFu);
}

TEST_P(Fixups, PointersWithGapsAreSet)
{
    const auto text = Find<const char *(size_t)>("spacedText");
    const size_t count = Find<size_t()>("spacedCount")();
    EXPECT_EQ(count, 19u);
    for (size_t i = 0; i < count; ++i)
        EXPECT_EQ(text(i), std::to_string(i));
}

TEST_P(Fixups, PointersToImportsAreSet)
{
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(Find<size_t(size_t, const char *)>("lengthBy")(i, "twelve chars"), 24u);
    EXPECT_EQ(Find<const void *()>("addressOfTrue")(), &kCFBooleanTrue);
}

TEST_P(Fixups, PointersBesideImportsKeepTheDistance)
{
    const auto *const address = reinterpret_cast<const char *>(&kCFBooleanTrue);
    EXPECT_EQ(Find<const void *()>("behindTrue")(), address + 24);
    EXPECT_EQ(Find<const void *()>("beforeTrue")(), address - 8);
}

TEST_P(Fixups, WeakImportsThatAreMissingAreNull)
{
    EXPECT_TRUE(Find<bool()>("missingAreNull")());
    EXPECT_TRUE(Find<bool()>("missingIsCalledOnlyIfThere")());
}

TEST_P(Fixups, FunctionsOfOtherLibrariesAreCalled)
{
    EXPECT_TRUE(Find<bool()>("callsImports")());
}

TEST_P(Fixups, MemoryBeyondTheFileIsZeroAndCanBeWritten)
{
    EXPECT_EQ(Find<size_t()>("sumOfZeroes")(), 0u);
    Find<void(char)>("writeZeroes")(1);
    EXPECT_EQ(Find<size_t()>("sumOfZeroes")(), 0x5000u);
}

TEST_P(Fixups, CodeCannotBeWrittenAndDataCannotBeRun)
{
    EXPECT_EQ(ProtectionOf(reinterpret_cast<const void *>(Find<int()>("answer"))), "r-xp");
    EXPECT_EQ(ProtectionOf(Find<const void *()>("addressOfData")()), "rw-p");
}

TEST_P(Fixups, WhatIsNotExportedIsNotFound)
{
    EXPECT_EQ(Find<int()>("answer")(), 42);
    EXPECT_EQ(macho::FindSymbol(Dylib(), "answe"), nullptr);
    EXPECT_EQ(macho::FindSymbol(Dylib(), "answers"), nullptr);
    EXPECT_EQ(macho::FindSymbol(Dylib(), ""), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Linked, Fixups, testing::Values("fixups_opcodes", "fixups_chained"),
                         [](const auto &info) { return std::string(info.param); });

TEST_F(MissingImports, ThatAreNotWeakAreAnErrorThatNamesThem)
{
    const std::string error = ErrorFrom([&] { Load("strong_import"); });
    EXPECT_THAT(error, HasSubstr(PathOf("strong_import")));
    EXPECT_THAT(error, HasSubstr("_missingFunction"));
    EXPECT_THAT(error, HasSubstr("/usr/lib/libmissing.dylib"));
}

TEST_F(ReplaceableFunctions, AreCalledThroughLazyPointersWithoutABind)
{
    Load("replaceable");
    EXPECT_EQ(Find<int()>("callReplaceable")(), 42);
}

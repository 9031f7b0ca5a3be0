// The tables of fixups, opcode by opcode.
#include <gmock/gmock.h>

#include "platform/macho/fixups.h"
#include "tests/platform/macho/load_error.h"

using macho::Bind;
using macho::BindTable;
using macho::Bytes;
using macho::Image;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr uint64_t kData = 0x2000;

/// An image with a segment of code at 0x1000, and one of data at 0x2000 with pointers to 0x1010, 0x1020...
class FixupTables : public testing::Test {
protected:
    FixupTables()
    {
        for (size_t i = 0; i < 16; ++i)
            content_[i] = 0x1010 + 0x10 * i;
        image.begin = 0x1000;
        image.end = 0x3000;
        image.segments = {
            {"__TEXT", 0x1000, 0x1000, Bytes(), true, false, true, false},
            {"__DATA", kData, 0x1000, Bytes(content_, sizeof content_), true, true, false, false}};
        image.dylibs = {"/one", "/two"};
    }

    /// The offsets of the rebased pointers in the segment of data.
    std::vector<uint64_t> Rebases(const std::vector<uint8_t> &table)
    {
        image.rebases.clear();
        macho::ReadRebases(Bytes(table.data(), table.size()), image);
        std::vector<uint64_t> offsets;
        for (const macho::Rebase &rebase : image.rebases) {
            EXPECT_EQ(rebase.target, content_[(rebase.address - kData) / 8]);
            offsets.push_back(rebase.address - kData);
        }
        return offsets;
    }

    /// The binds last as long as no others are read.
    const std::vector<Bind> &Binds(const std::vector<uint8_t> &table, BindTable kind = BindTable::Ordinary)
    {
        image.binds.clear();
        table_ = table;
        macho::ReadBinds(Bytes(table_.data(), table_.size()), kind, image);
        return image.binds;
    }

    std::string RebaseError(const std::vector<uint8_t> &table)
    {
        return ErrorFrom([&] { Rebases(table); });
    }
    std::string BindError(const std::vector<uint8_t> &table)
    {
        return ErrorFrom([&] { Binds(table); });
    }

    Image image;

private:
    uint64_t content_[16];
    std::vector<uint8_t> table_;
};

} // namespace

TEST_F(FixupTables, RebasesFollowEachOther)
{
    // Segment 1 at 8; 3 times.
    EXPECT_THAT(Rebases({0x11, 0x21, 8, 0x53, 0x00}), ElementsAre(8, 16, 24));
    EXPECT_THAT(Rebases({0x11, 0x21, 8, 0x60, 2, 0x00}), ElementsAre(8, 16));
}

TEST_F(FixupTables, RebasesSkip)
{
    // Add 16; one; add 2 words; one and add 8; one.
    EXPECT_THAT(Rebases({0x11, 0x21, 0, 0x30, 16, 0x51, 0x42, 0x70, 8, 0x51}), ElementsAre(16, 40, 56));
    // 3 times, skipping 8.
    EXPECT_THAT(Rebases({0x11, 0x21, 0, 0x80, 3, 8}), ElementsAre(0, 16, 32));
}

TEST_F(FixupTables, RebasesGoBackwardsByWrappingAround)
{
    // Add -8 in ten bytes.
    EXPECT_THAT(Rebases({0x11, 0x21, 16, 0x51, 0x30, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                         0x01, 0x51}),
                ElementsAre(16, 8));
}

TEST_F(FixupTables, WrongRebasesSayWhatAndWhere)
{
    EXPECT_THAT(RebaseError({0x51}), HasSubstr("rebase table: no place is set at 0x1"));
    EXPECT_THAT(RebaseError({0x25, 0}), HasSubstr("there is no segment 5"));
    EXPECT_THAT(RebaseError({0x20, 0, 0x51}), HasSubstr("outside what the file has of __TEXT"));
    EXPECT_THAT(RebaseError({0x21, 0x80, 0x01, 0x51}), HasSubstr("0x80"));
    EXPECT_THAT(RebaseError({0x21, 121, 0x51}), HasSubstr("outside what the file has of __DATA"));
    EXPECT_THAT(RebaseError({0x12}), HasSubstr("fixups of type 2"));
    EXPECT_THAT(RebaseError({0xF0}), HasSubstr("unknown opcode 0xf0"));
    EXPECT_THAT(RebaseError({0x21}), HasSubstr("beyond the end at 0x1"));
    EXPECT_THAT(RebaseError({0x21, 0, 0x60, 0xFF, 0xFF, 0x7F}), HasSubstr("more fixups than pointers"));
    EXPECT_THAT(RebaseError({0x60, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x03}),
                HasSubstr("wider than 64 bits"));
}

TEST_F(FixupTables, BindsHaveTheirSymbolLibraryAndAddend)
{
    const std::vector<Bind> &binds = Binds({0x12, 0x41, '_', 'a',  0,   0x51, 0x60, 0x78, 0x71, 8,
                                            0x90, 0x20, 1,   0x40, '_', 'b',  0,    0x60, 0,    0x90});
    ASSERT_EQ(binds.size(), 2u);
    EXPECT_EQ(binds[0].address, kData + 8);
    EXPECT_EQ(binds[0].symbol, "_a");
    EXPECT_EQ(binds[0].ordinal, 2);
    EXPECT_EQ(binds[0].addend, -8);
    EXPECT_TRUE(binds[0].isWeakImport);
    EXPECT_EQ(binds[1].address, kData + 16);
    EXPECT_EQ(binds[1].symbol, "_b");
    EXPECT_EQ(binds[1].ordinal, 1);
    EXPECT_EQ(binds[1].addend, 0);
    EXPECT_FALSE(binds[1].isWeakImport);
}

TEST_F(FixupTables, BindsSkip)
{
    const std::vector<Bind> &binds =
        Binds({0x11, 0x40, '_', 'a', 0, 0x71, 0, 0xA0, 8, 0xB2, 0x80, 8, 0xC0, 2, 16, 0x90});
    std::vector<uint64_t> offsets;
    for (const Bind &bind : binds)
        offsets.push_back(bind.address - kData);
    // One and 8 more; one and two words more; 8 more; twice with 16 between; one.
    EXPECT_THAT(offsets, ElementsAre(0, 16, 48, 72, 96));
}

TEST_F(FixupTables, LazyBindsFollowEachOther)
{
    const std::vector<Bind> &binds = Binds(
        {0x71, 0, 0x11, 0x40, '_', 'a', 0, 0x90, 0x00, 0x71, 8, 0x12, 0x40, '_', 'b', 0, 0x90, 0x00, 0x00},
        BindTable::Lazy);
    ASSERT_EQ(binds.size(), 2u);
    EXPECT_EQ(binds[0].symbol, "_a");
    EXPECT_EQ(binds[1].symbol, "_b");
    EXPECT_EQ(binds[1].ordinal, 2);
}

TEST_F(FixupTables, BindsToSpecialPlacesHaveTheirCodes)
{
    for (const auto &[operand, ordinal] : {std::pair(0x30, macho::kBindToSelf),
                                           {0x3F, macho::kBindToMainExecutable},
                                           {0x3E, macho::kBindFlat},
                                           {0x3D, macho::kBindWeak}}) {
        const std::vector<Bind> &binds =
            Binds({static_cast<uint8_t>(operand), 0x40, '_', 'a', 0, 0x71, 0, 0x90});
        ASSERT_EQ(binds.size(), 1u);
        EXPECT_EQ(binds[0].ordinal, ordinal);
    }
}

TEST_F(FixupTables, WrongBindsSayWhatAndWhere)
{
    EXPECT_THAT(BindError({0x71, 0, 0x90}), HasSubstr("bind table: no symbol is set"));
    EXPECT_THAT(BindError({0x40, '_', 'a', 0, 0x90}), HasSubstr("no place is set"));
    EXPECT_THAT(BindError({0x40, '_', 'a'}), HasSubstr("the string at 0x1 has no end"));
    EXPECT_THAT(BindError({0x13}), HasSubstr("there is no library 3"));
    EXPECT_THAT(BindError({0x20, 0xFF, 0x7F}), HasSubstr("there is no library 16383"));
    EXPECT_THAT(BindError({0x3C}), HasSubstr("there is no library -4"));
    EXPECT_THAT(BindError({0x52}), HasSubstr("fixups of type 2"));
    EXPECT_THAT(BindError({0xD0}), HasSubstr("unknown opcode 0xd0"));
    EXPECT_THAT(BindError({0x40, '_', 'a', 0, 0x70, 0, 0x90}), HasSubstr("__TEXT"));
    EXPECT_THAT(BindError({0x40, '_', 'a', 0, 0x71, 0, 0xC0, 0x11, 0}),
                HasSubstr("more fixups than pointers"));
}

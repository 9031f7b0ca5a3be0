// The compact unwind table, rule by rule.
#include "platform/macho/unwind_info.h"

#include <gmock/gmock.h>

#include "tests/platform/macho/load_error.h"

using macho::Bytes;
using macho::Image;
using macho::UnwindEntry;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// DWARF's instructions and register numbers.
constexpr uint8_t kDefineCfa = 0x0C, kDefineCfaOffset = 0x0E, kOffsetExtended = 0x05, kRbp = 6, kX29 = 29,
                  kX30 = 30;

/// The beginning of a function's code: `sub rsp, 0x12345`, with the number 3 bytes in.
constexpr uint8_t kCode[16] = {0x48, 0x81, 0xEC, 0x45, 0x23, 0x01, 0x00};

/// DWARF's instruction for a saved register; the words from the frame's address down to it follow.
constexpr uint8_t Saved(uint8_t registerNumber)
{
    return 0x80 | registerNumber;
}

class CompactUnwind : public testing::Test {
protected:
    explicit CompactUnwind(macho::Processor processor = macho::Processor::X86_64) : processor_(processor) {}

    /// Reads an image whose only function, at 0x1000, has these rules.
    std::vector<UnwindEntry> Read(uint32_t encoding)
    {
        // Header; index of one page and of the end; the page.
        words_ = {1,      28,          0,  28, 1, 32, 2, //
                  0x0008,                                // the slot of personality 1
                  0x0000, 56,          56,               // functions from 0 on: page at 56, no tables
                  0x0010, 0,           56,               // the end of the last function
                  2,      8 | 1 << 16,                   // a regular page of one entry, 8 bytes in
                  0x0000, encoding};
        Image image;
        image.processor = processor_;
        image.begin = 0x1000;
        image.end = 0x2000;
        image.segments = {{"__TEXT", 0x1000, 0x1000, Bytes(kCode, sizeof kCode), true, false, true, false}};
        macho::Section section;
        section.segment = "__TEXT";
        section.name = "__unwind_info";
        section.content = Bytes(words_.data(), words_.size() * sizeof(uint32_t));
        image.sections = {section, ehFrame_};
        return macho::ReadUnwindInfo(image);
    }

    /// Puts DWARF entries into the image, at 0x1100.
    void SetDwarf(const std::vector<uint8_t> &bytes)
    {
        dwarf_ = bytes;
        ehFrame_.segment = "__TEXT";
        ehFrame_.name = "__eh_frame";
        ehFrame_.address = 0x1100;
        ehFrame_.content = Bytes(dwarf_.data(), dwarf_.size());
    }

    std::vector<uint8_t> Rules(uint32_t encoding)
    {
        const std::vector<UnwindEntry> entries = Read(encoding);
        return entries.size() == 1 ? entries[0].instructions : std::vector<uint8_t>();
    }

    std::string ErrorFor(uint32_t encoding)
    {
        return ErrorFrom([&] { Read(encoding); });
    }

private:
    const macho::Processor processor_;
    std::vector<uint32_t> words_;
    std::vector<uint8_t> dwarf_;
    macho::Section ehFrame_;
};

class CompactUnwindOnArm64 : public CompactUnwind {
protected:
    CompactUnwindOnArm64() : CompactUnwind(macho::Processor::Arm64) {}
};

} // namespace

TEST_F(CompactUnwind, FunctionsLieWhereTheTableSays)
{
    const std::vector<UnwindEntry> entries = Read(0x11000000);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].begin, 0x1000u);
    EXPECT_EQ(entries[0].end, 0x1010u);
    EXPECT_EQ(entries[0].personalitySlot, 0x1008u);
    EXPECT_EQ(entries[0].handlerTable, 0u);
    EXPECT_TRUE(Read(0).empty()) << "a function without rules";
}

TEST_F(CompactUnwind, FramesWithAPointerHaveTheirRegistersBelowIt)
{
    EXPECT_THAT(Rules(0x01000000), ElementsAre(kDefineCfa, kRbp, 16, Saved(kRbp), 2));
    // Five words below: rbx (1), then r12 (2) ... r15 (5) upwards.
    EXPECT_THAT(Rules(0x01000000 | 5 << 16 | 1 | 2 << 3 | 3 << 6 | 4 << 9 | 5 << 12),
                ElementsAre(kDefineCfa, kRbp, 16, Saved(kRbp), 2, Saved(3), 7, Saved(12), 6, Saved(13), 5,
                            Saved(14), 4, Saved(15), 3));
    // A gap: nothing, then r14.
    EXPECT_THAT(Rules(0x01000000 | 2 << 16 | 0 | 4 << 3),
                ElementsAre(kDefineCfa, kRbp, 16, Saved(kRbp), 2, Saved(14), 3));
}

TEST_F(CompactUnwind, FramesOnTheStackHaveTheirSizeAndRegisters)
{
    EXPECT_THAT(Rules(0x02000000 | 3 << 16), ElementsAre(kDefineCfaOffset, 24));
    // One register, the last of six: rbp.
    EXPECT_THAT(Rules(0x02000000 | 2 << 16 | 1 << 10 | 5), ElementsAre(kDefineCfaOffset, 16, Saved(kRbp), 2));
    // All six in their order; the first lies lowest.
    EXPECT_THAT(Rules(0x02000000 | 8 << 16 | 6 << 10),
                ElementsAre(kDefineCfaOffset, 64, Saved(3), 7, Saved(12), 6, Saved(13), 5, Saved(14), 4,
                            Saved(15), 3, Saved(kRbp), 2));
    // The last of all orders of six: backwards. 5 * 120 + 4 * 24 + 3 * 6 + 2 * 2 + 1.
    EXPECT_THAT(Rules(0x02000000 | 8 << 16 | 6 << 10 | 719),
                ElementsAre(kDefineCfaOffset, 64, Saved(kRbp), 7, Saved(15), 6, Saved(14), 5, Saved(13), 4,
                            Saved(12), 3, Saved(3), 2));
    // Three: r13, rbx, r15. 2 * 20 + 0 * 4 + 2.
    EXPECT_THAT(Rules(0x02000000 | 5 << 16 | 3 << 10 | 42),
                ElementsAre(kDefineCfaOffset, 40, Saved(13), 4, Saved(3), 3, Saved(15), 2));
}

TEST_F(CompactUnwind, LargeFramesHaveTheirSizeInTheCode)
{
    // 0x12345 + 2 * 8 = 0x12355.
    EXPECT_THAT(Rules(0x03000000 | 3 << 16 | 2 << 13 | 1 << 10),
                ElementsAre(kDefineCfaOffset, 0xD5, 0xC6, 0x04, Saved(3), 2));
    EXPECT_THAT(ErrorFor(0x03000000 | 13 << 16), HasSubstr("beyond the end"));
}

TEST_F(CompactUnwind, FunctionsWithADwarfEntryHaveItsRules)
{
    // clang-format off
    SetDwarf({
        // What entries have in common: version 1, "zPLR", alignments 1 and -8, return address 16; the slot of the
        // personality at 0x1113 - 0x10B, tables and pointers relative to themselves; the CFA is rsp + 8.
        26, 0, 0, 0, 0, 0, 0, 0, 1, 'z', 'P', 'L', 'R', 0, 1, 0x78, 16,
        7, 0x9B, 0xF5, 0xFE, 0xFF, 0xFF, 0x10, 0x10, kDefineCfa, 7, 8, 0x90, 1,
        // The entry: from 0x1126 - 0x126 on, 12 bytes, its table at 0x1137 - 0x12F; the CFA is rsp + 16.
        31, 0, 0, 0, 34, 0, 0, 0, 0xDA, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 12, 0, 0, 0, 0, 0, 0, 0,
        8, 0xD1, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, kDefineCfaOffset, 16,
    });
    // clang-format on
    const std::vector<UnwindEntry> entries = Read(0x04000000 | 30);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].begin, 0x1000u);
    EXPECT_EQ(entries[0].end, 0x100Cu);
    EXPECT_EQ(entries[0].personalitySlot, 0x1008u);
    EXPECT_EQ(entries[0].handlerTable, 0x1008u);
    EXPECT_THAT(entries[0].instructions, ElementsAre(kDefineCfa, 7, 8, 0x90, 1, kDefineCfaOffset, 16));
}

TEST_F(CompactUnwind, WrongRulesAreRefused)
{
    EXPECT_THAT(ErrorFor(0x0F000000), HasSubstr("__unwind_info: the rules 0xf000000 are not known"));
    EXPECT_THAT(ErrorFor(0x01000000 | 7), HasSubstr("a frame with wrong registers"));
    EXPECT_THAT(ErrorFor(0x01000000 | 1 << 3), HasSubstr("a frame with wrong registers"));
    EXPECT_THAT(ErrorFor(0x02000000 | 7 << 10), HasSubstr("too many saved registers"));
    EXPECT_THAT(ErrorFor(0x21000000), HasSubstr("there is no personality 2"));
    EXPECT_THAT(ErrorFor(0x04000000), HasSubstr("__eh_frame: the section is missing"));
}

TEST_F(CompactUnwindOnArm64, FramesHaveTheirPairsOfRegistersBelowThem)
{
    EXPECT_THAT(Rules(0x04000000), ElementsAre(kDefineCfa, kX29, 16, Saved(kX30), 1, Saved(kX29), 2));
    // x19 and x20; x27 and x28.
    EXPECT_THAT(Rules(0x04000000 | 0x01 | 0x10),
                ElementsAre(kDefineCfa, kX29, 16, Saved(kX30), 1, Saved(kX29), 2, Saved(19), 3, Saved(20), 4,
                            Saved(27), 5, Saved(28), 6));
    // x21 to x26.
    EXPECT_THAT(Rules(0x04000000 | 0x0E),
                ElementsAre(kDefineCfa, kX29, 16, Saved(kX30), 1, Saved(kX29), 2, Saved(21), 3, Saved(22), 4,
                            Saved(23), 5, Saved(24), 6, Saved(25), 7, Saved(26), 8));
    // x19, x20, d8 and d9.
    EXPECT_THAT(Rules(0x04000000 | 0x101),
                ElementsAre(kDefineCfa, kX29, 16, Saved(kX30), 1, Saved(kX29), 2, Saved(19), 3, Saved(20), 4,
                            kOffsetExtended, 72, 5, kOffsetExtended, 73, 6));
    // d10 to d15.
    EXPECT_THAT(Rules(0x04000000 | 0xE00),
                ElementsAre(kDefineCfa, kX29, 16, Saved(kX30), 1, Saved(kX29), 2, kOffsetExtended, 74, 3,
                            kOffsetExtended, 75, 4, kOffsetExtended, 76, 5, kOffsetExtended, 77, 6,
                            kOffsetExtended, 78, 7, kOffsetExtended, 79, 8));
}

TEST_F(CompactUnwindOnArm64, FunctionsWithoutAFrameHaveTheSizeOfTheirStack)
{
    EXPECT_THAT(Rules(0x02000000), ElementsAre(kDefineCfaOffset, 0));
    EXPECT_THAT(Rules(0x02000000 | 3 << 12), ElementsAre(kDefineCfaOffset, 48));
    // The largest: 4095 * 16 = 65520.
    EXPECT_THAT(Rules(0x02FFF000), ElementsAre(kDefineCfaOffset, 0xF0, 0xFF, 0x03));
}

TEST_F(CompactUnwindOnArm64, PairsOfAFunctionWithoutAFrameLieAtTheTopOfItsStack)
{
    EXPECT_THAT(Rules(0x02002101), ElementsAre(kDefineCfaOffset, 32, Saved(19), 1, Saved(20), 2,
                                               kOffsetExtended, 72, 3, kOffsetExtended, 73, 4));
}

TEST_F(CompactUnwindOnArm64, FunctionsWithADwarfEntryHaveItsRules)
{
    // Version 1, "zR", alignments 1 and -8, return address 30; pointers relative to themselves; the CFA is
    // sp. The entry: from 0x1118 - 0x118 on, 12 bytes; the CFA is sp + 16.
    std::vector<uint8_t> bytes = {16, 0, 0,    0,          0,  0, 0,  0, 1, 'z', 'R', 0, 1, 0x78,
                                  30, 1, 0x10, kDefineCfa, 31, 0, 26, 0, 0, 0,   24,  0, 0, 0};
    const std::vector<uint8_t> entry = {0xE4, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 12,
                                        0,    0,    0,    0,    0,    0,    0,    0,    kDefineCfaOffset,
                                        16,   0,    0,    0};
    bytes.insert(bytes.end(), entry.begin(), entry.end());
    SetDwarf(bytes);
    const std::vector<UnwindEntry> entries = Read(0x03000000 | 20);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].begin, 0x1000u);
    EXPECT_EQ(entries[0].end, 0x100Cu);
    EXPECT_THAT(entries[0].instructions, ElementsAre(kDefineCfa, 31, 0, kDefineCfaOffset, 16, 0, 0, 0));
    // x86-64's column.
    bytes[14] = 16;
    SetDwarf(bytes);
    EXPECT_THAT(ErrorFor(0x03000000 | 20), HasSubstr("unusual alignments or return address"));
}

TEST_F(CompactUnwindOnArm64, WrongRulesAreRefused)
{
    EXPECT_THAT(ErrorFor(0x01000000), HasSubstr("__unwind_info: the rules 0x1000000 are not known"));
    EXPECT_THAT(ErrorFor(0x03000000), HasSubstr("__eh_frame: the section is missing"));
}

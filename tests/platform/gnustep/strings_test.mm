// Strings of UTF-16 units: making, reading, copying, normalising.
#include "tests/platform/gnustep/port_testing.h"

using namespace port_testing;

namespace {

using OwnedMutableString = Owned<CFMutableStringRef>;

OwnedMutableString MutableCopyOf(std::u16string_view units)
{
    return OwnedMutableString(CFStringCreateMutableCopy(nullptr, 0, StringOf(units).get()));
}

std::u16string Normalized(std::u16string_view units, CFStringNormalizationForm form)
{
    const OwnedMutableString string = MutableCopyOf(units);
    CFStringNormalize(string.get(), form);
    return UnitsOf(string.get());
}

/// Texts that GNUstep's own initialisers refuse or change, and plain ones.
const std::u16string kTexts[] = {
    u"",
    u"plain",
    u"\u00E9\u00DF",
    u"\u65E5\u672C\u8A9E",
    u"\U0001F600",
    std::u16string(u"a\0b\0", 4),
    std::u16string{0xD800},
    std::u16string{0xDC00},
    std::u16string{'a', 0xD800, 'b', 0xDC00, 'c'},
    std::u16string{0xDC00, 0xD800},
    std::u16string{'a', 0xD83D},
    std::u16string{0xFEFF},
    std::u16string{0xFEFF, 'a'},
    std::u16string{0xFFFE, 'a', 0xE9},
    std::u16string{0xFEFF, 0xD800, 0xFFFF},
    std::u16string{0xFFFF, 0xFFFE, 0xFDD0},
};

} // namespace

TEST(Strings, KeepEveryUnit)
{
    for (const std::u16string &text : kTexts) {
        const OwnedString string = StringOf(text);
        ASSERT_NE(string, nullptr);
        EXPECT_EQ(UnitsOf(string.get()), text);
        EXPECT_EQ(CFStringGetLength(string.get()), static_cast<CFIndex>(text.size()));
        EXPECT_EQ([(NSString *)string.get() length], text.size());
    }
}

TEST(Strings, KeepEveryUnitInMutableCopies)
{
    for (const std::u16string &text : kTexts)
        EXPECT_EQ(UnitsOf(MutableCopyOf(text).get()), text);
}

TEST(Strings, KeepEverySingleUnit)
{
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::u16string text{u'x', static_cast<char16_t>(unit)};
        const OwnedString string = StringOf(text);
        ASSERT_EQ(UnitsOf(string.get()), text) << std::hex << unit;
    }
}

TEST(Strings, AreOwnedByTheCaller)
{
    const OwnedString string = StringOf(u"a text that no other string shares \u65E5");
    EXPECT_EQ([(NSString *)string.get() retainCount], 1U);
    const OwnedMutableString copy(CFStringCreateMutableCopy(nullptr, 0, string.get()));
    EXPECT_EQ([(NSString *)copy.get() retainCount], 1U);
    const OwnedString surrogate = StringOf(std::u16string{'a', 0xD800});
    EXPECT_EQ([(NSString *)surrogate.get() retainCount], 1U);
}

TEST(Strings, OfNoUnitsAreEmpty)
{
    const OwnedString fromNull(CFStringCreateWithCharacters(nullptr, nullptr, 0));
    ASSERT_NE(fromNull, nullptr);
    EXPECT_EQ(CFStringGetLength(fromNull.get()), 0);
}

TEST(Strings, OfImpossibleArgumentsAreNull)
{
    const UniChar unit = 'a';
    EXPECT_EQ(CFStringCreateWithCharacters(nullptr, &unit, -1), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(nullptr, nullptr, 1), nullptr);
    EXPECT_EQ(CFStringCreateMutableCopy(nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(CFStringCreateWithCString(nullptr, nullptr, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(CFStringGetLength(nullptr), 0);
}

TEST(Strings, EqualCocoaStringsOfTheSameText)
{
    const OwnedString string = StringOf(u"\u00E9tude");
    EXPECT_TRUE([(NSString *)string.get() isEqual:@"\u00E9tude"]);
    EXPECT_EQ([(NSString *)string.get() hash], [@"\u00E9tude" hash]);
}

TEST(Strings, ReturnTheUnitsOfARange)
{
    const OwnedString string = StringOf(u"abcdef");
    UniChar units[4] = {9, 9, 9, 9};
    CFStringGetCharacters(string.get(), CFRangeMake(2, 3), units);
    EXPECT_EQ(std::u16string(reinterpret_cast<char16_t *>(units), 3), u"cde");
    EXPECT_EQ(units[3], 9);
}

TEST(Strings, IgnoreThePartOfARangeOutsideThem)
{
    const OwnedString string = StringOf(u"abc");
    UniChar units[3] = {9, 9, 9};
    CFStringGetCharacters(string.get(), CFRangeMake(2, 3), units);
    EXPECT_EQ(units[0], 'c');
    EXPECT_EQ(units[1], 9);
    CFStringGetCharacters(string.get(), CFRangeMake(3, 1), units);
    CFStringGetCharacters(string.get(), CFRangeMake(-1, 2), units);
    CFStringGetCharacters(string.get(), CFRangeMake(0, -1), units);
    CFStringGetCharacters(string.get(), CFRangeMake(0, 3), nullptr);
    CFStringGetCharacters(nullptr, CFRangeMake(0, 3), units);
    EXPECT_EQ(units[0], 'c');
}

TEST(Normalization, DecomposesAndComposes)
{
    EXPECT_EQ(Normalized(u"\u00E9", kCFStringNormalizationFormD), u"e\u0301");
    EXPECT_EQ(Normalized(u"e\u0301", kCFStringNormalizationFormC), u"\u00E9");
    EXPECT_EQ(Normalized(u"\u1E69", kCFStringNormalizationFormD), u"s\u0323\u0307");
    EXPECT_EQ(Normalized(u"\uAC00", kCFStringNormalizationFormD), u"\u1100\u1161");
    EXPECT_EQ(Normalized(u"\u2126", kCFStringNormalizationFormC), u"\u03A9");
    EXPECT_EQ(Normalized(u"\uFB01", kCFStringNormalizationFormD), u"\uFB01");
    EXPECT_EQ(Normalized(u"\uFB01", kCFStringNormalizationFormKD), u"fi");
    EXPECT_EQ(Normalized(u"\uFB01e\u0301", kCFStringNormalizationFormKC), u"fi\u00E9");
}

TEST(Normalization, LeavesOtherTextAsItIs)
{
    for (const std::u16string &text : {std::u16string(), std::u16string(u"plain"),
                                       std::u16string{0xFEFF, 'a'}, std::u16string{'a', 0xD800, 0xE000}})
        EXPECT_EQ(Normalized(text, kCFStringNormalizationFormD), text);
}

TEST(Normalization, IgnoresNull)
{
    CFStringNormalize(nullptr, kCFStringNormalizationFormD);
}

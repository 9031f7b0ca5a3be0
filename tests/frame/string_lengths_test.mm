// Texts of every length around the library's buffers, and very long ones, in both directions.
#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/string_to_cocoa.h"
#include "frame/host_strings.h"
#include "tests/support/linked_test.h"
#include "tests/support/texts.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Past every buffer: 99 units, 600 bytes, 799 bytes.
constexpr size_t kLongest = 1000;

/// One character of a text, which is repeated.
struct Character {
    const char *name;
    std::u16string units;
};

void PrintTo(const Character &character, std::ostream *stream)
{
    *stream << character.name;
}

const Character kCharacters[] = {
    {"OneByte", u"a"},
    {"TwoBytes", u"\u00E4"},
    {"ThreeBytes", u"\u4E2D"},
    {"Pair", u"\U0001F600"},
    {"Mixed", u"a\u00E4\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"},
};

std::u16string Repeated(const std::u16string &units, size_t count)
{
    std::u16string text;
    text.reserve(units.size() * count);
    for (size_t index = 0; index < count; ++index)
        text += units;
    return text;
}

Value Build(std::string_view bytes, uint32_t encoding)
{
    return Owned(REALBuildUnicodeString(bytes.data(), static_cast<int64_t>(bytes.size()), encoding));
}

class EveryLength : public LinkedTest, public ::testing::WithParamInterface<Character> {
protected:
    /// Checks the texts of the parameter's character up to the longest, each with its UTF-8.
    template <typename Check>
    void ForEachText(Check check)
    {
        const std::u16string &units = GetParam().units;
        for (size_t count = 1; count * units.size() <= kLongest && !HasFailure(); ++count) {
            const std::u16string text = Repeated(units, count);
            SCOPED_TRACE(text.size());
            check(text, EncodedText(text, "UTF-8").value());
        }
    }

    void ExpectWholeInCocoa()
    {
        ForEachText([](const std::u16string &text, const std::string &utf8) {
            const qzlhost::AutoreleasePool pool;
            const Value string = Value::StringOfBytes(utf8, qzlhost::encoding::UTF8);
            EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), text);
        });
    }
};

std::string CharacterName(const ::testing::TestParamInfo<Character> &info)
{
    return info.param.name;
}

class UTF32OnOldHosts : public EveryLength {};

/// Whether the host answers with Core Foundation strings.
class LongText : public LinkedTest, public ::testing::WithParamInterface<bool> {};

} // namespace

TEST_P(EveryLength, ComesFromCocoaWhole)
{
    Start();
    ForEachText([](const std::u16string &text, const std::string &utf8) {
        const qzlhost::AutoreleasePool pool;
        EXPECT_EQ(Owned(CFString2RBString((CFStringRef)CocoaString(text))).StringBytes(), utf8);
    });
}

TEST_P(EveryLength, GoesToCocoaWholeAsTheHostsCFString)
{
    Start();
    ExpectWholeInCocoa();
}

TEST_P(EveryLength, GoesToCocoaWholeFromBytes)
{
    Start(2024.01, [](Host &unloaded) { unloaded.Lack("REALGetStringCFString"); });
    ExpectWholeInCocoa();
}

TEST_P(EveryLength, IsBuiltWholeFromUTF16)
{
    Start();
    ForEachText([](const std::u16string &text, const std::string &utf8) {
        EXPECT_EQ(Build(BytesOfUnits(text), qzlhost::encoding::UTF16).StringBytes(), utf8);
    });
}

TEST_P(EveryLength, IsBuiltWholeFromUTF32)
{
    Start();
    ForEachText([](const std::u16string &text, const std::string &utf8) {
        const std::string bytes = EncodedText(text, "UTF-32LE").value();
        EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8);
    });
}

TEST_P(EveryLength, WithTheLongestTextAtItsEndIsRefusedForALoneSurrogate)
{
    Start();
    ForEachText([](const std::u16string &text, const std::string &) {
        const qzlhost::AutoreleasePool pool;
        const std::u16string broken = text + char16_t{0xD800};
        EXPECT_EQ(CFString2RBString((CFStringRef)CocoaString(broken)), nullptr);
    });
}

INSTANTIATE_TEST_SUITE_P(All, EveryLength, ::testing::ValuesIn(kCharacters), CharacterName);

TEST_P(UTF32OnOldHosts, IsBuiltWholeWithUpToThreeBytesMore)
{
    Start(2012.99);
    ForEachText([](const std::u16string &text, const std::string &utf8) {
        std::string bytes = EncodedText(text, "UTF-32LE").value();
        for (int more = 0; more < 4; ++more, bytes += '\x7F')
            EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8) << more;
    });
}

TEST_P(UTF32OnOldHosts, SurrogatesAndNumbersBeyondUnicodeFitTheBuffers)
{
    Start(2012.99);
    ForEachText([](const std::u16string &text, const std::string &utf8) {
        const std::u32string wrong = {0xD800, 0x110000, 0xDFFF, 0xFFFFFFFF};
        const std::string bytes = EncodedText(text, "UTF-32LE").value() + std::string(BytesOfUnits(wrong));
        EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8 + "\xEF\xBF\xBD\xEF\xBF\xBD");
    });
}

INSTANTIATE_TEST_SUITE_P(All, UTF32OnOldHosts, ::testing::ValuesIn(kCharacters), CharacterName);

TEST_P(LongText, Of64MiBPassesBothWays)
{
    constexpr size_t kBytes = size_t{64} << 20;
    const std::u16string piece =
        u"a text of sixty-four bytes: \u00E4\u00F6\u00FC \u0416 \u4E2D\u6587 \U0001F600 - and so on...";
    const std::string bytesOfPiece = EncodedText(piece, "UTF-8").value();
    ASSERT_EQ(bytesOfPiece.size(), 64u);
    std::string bytes;
    bytes.reserve(kBytes);
    while (bytes.size() < kBytes)
        bytes += bytesOfPiece;
    const std::u16string text = Repeated(piece, kBytes / bytesOfPiece.size());
    Start(2024.01, [](Host &unloaded) {
        if (!GetParam())
            unloaded.Lack("REALGetStringCFString");
    });
    const Value string = Value::StringOfBytes(bytes, qzlhost::encoding::UTF8);

    NSString *const cocoa = NewNSString(StringOf(string));
    const Value back = Owned(CFString2RBString((CFStringRef)cocoa));

    // Not EXPECT_EQ, which would print them.
    EXPECT_TRUE(UnitsOf(cocoa) == text);
    EXPECT_TRUE(back.StringBytes() == bytes);
}

INSTANTIATE_TEST_SUITE_P(All, LongText, ::testing::Bool(),
                         [](const auto &info) { return info.param ? "AsTheHostsCFString" : "FromBytes"; });

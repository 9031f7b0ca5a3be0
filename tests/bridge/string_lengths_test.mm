// Texts of every length around the library's buffers, and very long ones, in both directions.
#include "tests/bridge/encoding_test.h"
#include "tests/support/row_names.h"

using qzlhost::Value;

namespace {

/// Past every buffer: 99 units, 600 bytes, 799 bytes.
constexpr size_t kLongest = 1000;

/// One character of a text, which is repeated.
struct Character {
    const char *name;
    std::u16string units;
};

const Character kCharacters[] = {
    {"OneByte", u"a"},
    {"TwoBytes", u"\u00E4"},
    {"ThreeBytes", u"\u4E2D"},
    {"Pair", u"\U0001F600"},
    {"Mixed", u"a\u00E4\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"},
};

class EveryLength : public EncodingTest, public ::testing::WithParamInterface<Character> {
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
        ForEachText([this](const std::u16string &text, const std::string &utf8) {
            const qzlhost::AutoreleasePool pool;
            EXPECT_EQ(Read(utf8, qzlhost::encoding::UTF8), text);
        });
    }
};

class UTF32OnOldHosts : public EveryLength {};

class LongText : public EncodingTest, public ::testing::WithParamInterface<Route> {};

} // namespace

TEST_P(EveryLength, ComesFromCocoaWhole)
{
    Start();
    ForEachText([this](const std::u16string &text, const std::string &utf8) {
        const qzlhost::AutoreleasePool pool;
        EXPECT_EQ(Write(text), utf8);
    });
}

TEST_P(EveryLength, GoesToCocoaWholeAsTheHostsCFString)
{
    StartOnRoute(Route::HostsCFString);
    ExpectWholeInCocoa();
}

TEST_P(EveryLength, GoesToCocoaWholeFromBytes)
{
    StartOnRoute(Route::Bytes);
    ExpectWholeInCocoa();
}

TEST_P(EveryLength, IsBuiltWholeFromUTF16)
{
    Start();
    ForEachText([this](const std::u16string &text, const std::string &utf8) {
        EXPECT_EQ(Build(BytesOfUnits(text), qzlhost::encoding::UTF16).StringBytes(), utf8);
    });
}

TEST_P(EveryLength, IsBuiltWholeFromUTF32)
{
    Start();
    ForEachText([this](const std::u16string &text, const std::string &utf8) {
        const std::string bytes = EncodedText(text, "UTF-32LE").value();
        EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8);
    });
}

TEST_P(EveryLength, WithALoneSurrogateAtItsEndIsRefused)
{
    Start();
    ForEachText([](const std::u16string &text, const std::string &) {
        const qzlhost::AutoreleasePool pool;
        const std::u16string broken = text + char16_t{0xD800};
        EXPECT_EQ(CFString2RBString((CFStringRef)CocoaString(broken)), nullptr);
    });
}

INSTANTIATE_TEST_SUITE_P(All, EveryLength, ::testing::ValuesIn(kCharacters), kNameOfRow);

TEST_P(UTF32OnOldHosts, IsBuiltWholeWithUpToThreeBytesMore)
{
    Start(2012.99);
    ForEachText([this](const std::u16string &text, const std::string &utf8) {
        std::string bytes = EncodedText(text, "UTF-32LE").value();
        for (int more = 0; more < 4; ++more, bytes += '\x7F')
            EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8) << more;
    });
}

TEST_P(UTF32OnOldHosts, SurrogatesAndNumbersBeyondUnicodeFitTheBuffers)
{
    Start(2012.99);
    ForEachText([this](const std::u16string &text, const std::string &utf8) {
        const std::u32string wrong = {0xD800, 0x110000, 0xDFFF, 0xFFFFFFFF};
        const std::string bytes = EncodedText(text, "UTF-32LE").value() + std::string(BytesOfUnits(wrong));
        EXPECT_EQ(Build(bytes, qzlhost::encoding::UTF32).StringBytes(), utf8 + "\xEF\xBF\xBD\xEF\xBF\xBD");
    });
}

INSTANTIATE_TEST_SUITE_P(All, UTF32OnOldHosts, ::testing::ValuesIn(kCharacters), kNameOfRow);

TEST_P(LongText, Of64MiBPassesBothWays)
{
    constexpr size_t kBytes = size_t{64} << 20;
    const std::u16string piece =
        u"a text of sixty-four bytes: \u00E4\u00F6\u00FC \u0416 \u4E2D\u6587 \U0001F600 - and so on...";
    const std::string bytesOfPiece = EncodedText(piece, "UTF-8").value();
    ASSERT_EQ(bytesOfPiece.size(), 64u);
    const std::string bytes = Repeated(bytesOfPiece, kBytes / bytesOfPiece.size());
    const std::u16string text = Repeated(piece, kBytes / bytesOfPiece.size());
    StartOnRoute(GetParam());
    const Value string = Value::StringOfBytes(bytes, qzlhost::encoding::UTF8);

    NSString *const cocoa = NewNSString(StringOf(string));
    const Value back = Owned(CFString2RBString((CFStringRef)cocoa));

    // Not EXPECT_EQ, which would print them.
    EXPECT_TRUE(UnitsOf(cocoa) == text);
    EXPECT_TRUE(back.StringBytes() == bytes);
}

INSTANTIATE_TEST_SUITE_P(All, LongText, ::testing::ValuesIn(kRoutes),
                         [](const auto &info) { return NameOf(info.param); });

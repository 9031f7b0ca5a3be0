// Host strings with byte-order marks, lone surrogates and invalid bytes become Cocoa strings.
#include "tests/bridge/encoding_test.h"

using qzlhost::Host;
using qzlhost::Value;
using namespace std::string_literals;

namespace {

const std::u16string kText = u"plain gr\u00FC\u00DF \u4E2D\u6587 \U0001F600 \U0010FFFD";

class TextByRoute : public EncodingTest, public ::testing::WithParamInterface<Route> {};
using TextFromBytes = EncodingTest;
class HostsCFString : public EncodingTest, public ::testing::WithParamInterface<double> {};

} // namespace

TEST_P(TextByRoute, KeepsLoneSurrogatesOfUTF16)
{
    const std::u16string text = {u'a', 0xD800, u'b', 0xDC00, 0xDBFF};
    StartOnRoute(GetParam());

    EXPECT_EQ(Read(BytesOfUnits(text), qzlhost::encoding::UTF16), text);
}

TEST_P(TextByRoute, KeepsTheByteOrderMarkOfUTF16)
{
    const std::u16string text = u"\uFEFFmarked";
    StartOnRoute(GetParam());

    EXPECT_EQ(Read(BytesOfUnits(text), qzlhost::encoding::UTF16), text);
}

TEST_P(TextByRoute, InvalidUTF8IsNil)
{
    StartOnRoute(GetParam());
    for (const char *bytes :
         {"\xED\xA0\x80", "\xED\xBF\xBF", "\x80", "\xC0\x80", "\xF4\x90\x80\x80", "a\xE4\xB8"})
        EXPECT_EQ(Read(bytes, qzlhost::encoding::UTF8), std::nullopt) << testing::PrintToString(bytes);
}

TEST_P(TextByRoute, EncodingThatNobodyKnowsIsNil)
{
    StartOnRoute(GetParam());
    for (const uint32_t encoding : {0x7FFFFFFFu, 0xFFFFFFFFu, 0x0BFEu, 0x0001FFFFu})
        EXPECT_EQ(Read("text", encoding), std::nullopt) << encoding;
}

INSTANTIATE_TEST_SUITE_P(All, TextByRoute, ::testing::ValuesIn(kRoutes),
                         [](const auto &info) { return NameOf(info.param); });

TEST_F(TextFromBytes, WithoutAnEncodingIsMacRoman)
{
    // The published table of the upper half.
    const std::u16string upperHalf =
        u"\u00C4\u00C5\u00C7\u00C9\u00D1\u00D6\u00DC\u00E1\u00E0\u00E2\u00E4\u00E3\u00E5\u00E7\u00E9\u00E8"
        u"\u00EA\u00EB\u00ED\u00EC\u00EE\u00EF\u00F1\u00F3\u00F2\u00F4\u00F6\u00F5\u00FA\u00F9\u00FB\u00FC"
        u"\u2020\u00B0\u00A2\u00A3\u00A7\u2022\u00B6\u00DF\u00AE\u00A9\u2122\u00B4\u00A8\u2260\u00C6\u00D8"
        u"\u221E\u00B1\u2264\u2265\u00A5\u00B5\u2202\u2211\u220F\u03C0\u222B\u00AA\u00BA\u03A9\u00E6\u00F8"
        u"\u00BF\u00A1\u00AC\u221A\u0192\u2248\u2206\u00AB\u00BB\u2026\u00A0\u00C0\u00C3\u00D5\u0152\u0153"
        u"\u2013\u2014\u201C\u201D\u2018\u2019\u00F7\u25CA\u00FF\u0178\u2044\u20AC\u2039\u203A\uFB01\uFB02"
        u"\u2021\u00B7\u201A\u201E\u2030\u00C2\u00CA\u00C1\u00CB\u00C8\u00CD\u00CE\u00CF\u00CC\u00D3\u00D4"
        u"\uF8FF\u00D2\u00DA\u00DB\u00D9\u0131\u02C6\u02DC\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";
    std::string bytes;
    for (int byte = 0x80; byte < 0x100; ++byte)
        bytes += static_cast<char>(byte);
    StartLacking({"REALGetStringCFString", "REALGetStringEncoding"});

    EXPECT_EQ(Read(bytes, qzlhost::encoding::UTF8), upperHalf);
}

TEST_F(TextFromBytes, OfUTF16WithAnOddLengthLosesTheLastByte)
{
    const std::u16string text = u"abc";
    StartOnRoute(Route::Bytes);

    EXPECT_EQ(Read(BytesOfUnits(text).substr(0, 5), qzlhost::encoding::UTF16), u"ab");
    EXPECT_EQ(Read(BytesOfUnits(text).substr(0, 1), qzlhost::encoding::UTF16), u"");
}

TEST_F(TextFromBytes, OfUTF8LosesOneByteOrderMark)
{
    StartOnRoute(Route::Bytes);

    EXPECT_EQ(Read("\xEF\xBB\xBFtext", qzlhost::encoding::UTF8), u"text");
    EXPECT_EQ(Read("\xEF\xBB\xBF\xEF\xBB\xBFtext", qzlhost::encoding::UTF8), u"\uFEFFtext");
    EXPECT_EQ(Read("\xEF\xBB\xBF", qzlhost::encoding::UTF8), u"");
    EXPECT_EQ(Read("te\xEF\xBB\xBFxt", qzlhost::encoding::UTF8), u"te\uFEFFxt");
}

TEST_F(TextFromBytes, OfUTF32FollowsItsByteOrderMarkAndLosesIt)
{
    const std::string little = EncodedText(u"\uFEFF" + kText, "UTF-32LE").value();
    const std::string big = EncodedText(u"\uFEFF" + kText, "UTF-32BE").value();
    StartOnRoute(Route::Bytes);

    EXPECT_EQ(Read(little, qzlhost::encoding::UTF32), kText);
    EXPECT_EQ(Read(big, qzlhost::encoding::UTF32), kText);
}

TEST_F(TextFromBytes, OfUTF32WithoutAByteOrderMarkIsReadAsBigEndian)
{
    const std::string big = EncodedText(kText, "UTF-32BE").value();
    const std::string little = EncodedText(kText, "UTF-32LE").value();
    StartOnRoute(Route::Bytes);

    EXPECT_EQ(Read(big, qzlhost::encoding::UTF32), kText);
    EXPECT_EQ(Read(little, qzlhost::encoding::UTF32), std::nullopt);
}

TEST_F(TextFromBytes, OfUTF32RefusesSurrogatesAndWhatIsBeyondUnicode)
{
    StartOnRoute(Route::Bytes);
    for (const std::string &bytes : {"\0\0\xD8\0"s, "\0\0\xDF\xFF"s, "\0\x11\0\0"s, "\xFF\xFF\xFF\xFF"s})
        EXPECT_EQ(Read(bytes, qzlhost::encoding::UTF32), std::nullopt) << testing::PrintToString(bytes);
}

TEST_P(HostsCFString, IsReturnedUnchanged)
{
    static NSString *const kAnswer = @"\uFEFFwhat the host says";
    using GetString = CFStringRef (*)(REALstring, int64_t);
    static constexpr GetString kGetString = [](REALstring, int64_t option) -> CFStringRef {
        EXPECT_EQ(option, 0);
        return (CFStringRef)[kAnswer retain];
    };
    Start(GetParam(), [](Host &unloaded) {
        unloaded.Replace("REALGetStringCFString", reinterpret_cast<void *>(kGetString));
    });
    const Value string = Value::StringOfBytes("the bytes", qzlhost::encoding::Latin1);

    EXPECT_EQ(NewNSString(StringOf(string)), kAnswer);
}

// Older and newer hosts are asked by different functions of the library.
INSTANTIATE_TEST_SUITE_P(Versions, HostsCFString, ::testing::Values(2011.99, 2012.0, 2024.01));

TEST_F(EncodingTest, HostReadsUTF32InTheMachinesOrder)
{
    const std::string bytes = EncodedText(kText, "UTF-32LE").value();
    StartOnRoute(Route::HostsCFString);

    EXPECT_EQ(Read(bytes, qzlhost::encoding::UTF32), kText);
}

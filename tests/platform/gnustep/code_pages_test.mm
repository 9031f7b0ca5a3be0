// Code pages, byte by byte, against the C library's converters.
#include "tests/platform/gnustep/port_testing.h"

#include <map>

#include "tests/support/texts.h"

using namespace port_testing;

namespace {

using Text = std::optional<std::u16string>;

std::string OneByte(int byte)
{
    return std::string(1, static_cast<char>(byte));
}

/// Bytes for which the C library's table is not the one to follow, and their texts.
using Differences = std::map<int, Text>;

struct CodePage {
    CFStringEncoding encoding;
    const char *charset;
    Differences differences;
};

/// The bytes that Windows leaves undefined and converts to control characters.
Differences ControlCharacters(std::initializer_list<int> bytes)
{
    Differences differences;
    for (const int byte : bytes)
        differences[byte] = std::u16string(1, static_cast<char16_t>(byte));
    return differences;
}

void PrintTo(const CodePage &page, std::ostream *stream)
{
    *stream << page.charset;
}

class BytesOfCodePage : public testing::TestWithParam<CodePage> {};

const CodePage kCodePages[] = {
    // The published mapping has these where the C library still has Delta and a private logo.
    {0x0000, "MACINTOSH", {{0xC6, u"\u2206"}, {0xF0, u"\uF8FF"}}},
    // The euro replaced the currency sign.
    {0x0007, "MAC-UK", {{0xFF, u"\u20AC"}}},
    {0x0098, "MAC-UK", {{0xFF, u"\u20AC"}}},
    {0x001D, "MAC-CENTRALEUROPE", {}},
    {0x0201, "ISO-8859-1", {}},
    {0x0202, "ISO-8859-2", {}},
    {0x0203, "ISO-8859-3", {}},
    {0x0204, "ISO-8859-4", {}},
    {0x0205, "ISO-8859-5", {}},
    {0x0206, "ISO-8859-6", {}},
    {0x0207, "ISO-8859-7", {}},
    {0x0208, "ISO-8859-8", {}},
    {0x0209, "ISO-8859-9", {}},
    {0x020A, "ISO-8859-10", {}},
    {0x020B, "ISO-8859-11", {}},
    {0x020D, "ISO-8859-13", {}},
    {0x020E, "ISO-8859-14", {}},
    {0x020F, "ISO-8859-15", {}},
    {0x0400, "CP437", {}},
    {0x0405, "CP737", {}},
    {0x0406, "CP775", {}},
    {0x0410, "CP850", {}},
    {0x0412, "CP852", {}},
    {0x0413, "CP855", {}},
    {0x0414, "CP857", {}},
    {0x0415, "CP860", {}},
    {0x0416, "CP861", {}},
    {0x0417, "CP862", {}},
    {0x0418, "CP863", {}},
    // ASCII below 0x80, where the C library has the Arabic percent sign.
    {0x0419, "CP864", {{0x25, u"%"}}},
    {0x041A, "CP865", {}},
    {0x041B, "CP866", {}},
    // The vendor's table has these two.
    {0x041C, "CP869", {{0x88, u"\u0387"}, {0xEF, u"\u00B4"}}},
    {0x0500, "CP1252", ControlCharacters({0x81, 0x8D, 0x8F, 0x90, 0x9D})},
    {0x0501, "CP1250", ControlCharacters({0x81, 0x83, 0x88, 0x90, 0x98})},
    {0x0502, "CP1251", ControlCharacters({0x98})},
    {0x0506, "CP1256", {}},
    {0x0A02, "KOI8-R", {}},
    {0x0A08, "KOI8-U", {}},
    {0x0C02, "IBM037", {}},
};

} // namespace

TEST_P(BytesOfCodePage, AreReadAndWrittenAsTheTableSays)
{
    const CodePage &page = GetParam();
    for (int byte = 0; byte < 256; ++byte) {
        const auto difference = page.differences.find(byte);
        const Text expected = difference != page.differences.end() ? difference->second
                                                                   : DecodedText(OneByte(byte), page.charset);
        EXPECT_EQ(Decode(OneByte(byte), page.encoding), expected) << std::hex << byte;
        if (expected)
            EXPECT_EQ(Encode(*expected, page.encoding), OneByte(byte)) << std::hex << byte;
    }
}

INSTANTIATE_TEST_SUITE_P(All, BytesOfCodePage, testing::ValuesIn(kCodePages));

namespace {

/// The bytes of a page that Windows defines, which are those that the C library converts.
class DefinedBytesOfWindowsPage : public testing::TestWithParam<std::pair<CFStringEncoding, const char *>> {};

} // namespace

TEST_P(DefinedBytesOfWindowsPage, AreReadAndWrittenAsTheTableSays)
{
    const auto [encoding, charset] = GetParam();
    int defined = 0;
    for (int byte = 0; byte < 256; ++byte) {
        const Text expected = DecodedText(OneByte(byte), charset);
        if (!expected)
            continue;
        ++defined;
        EXPECT_EQ(Decode(OneByte(byte), encoding), expected) << std::hex << byte;
        EXPECT_EQ(Encode(*expected, encoding), OneByte(byte)) << std::hex << byte;
    }
    EXPECT_GT(defined, 220);
}

INSTANTIATE_TEST_SUITE_P(All, DefinedBytesOfWindowsPage,
                         testing::Values(std::pair(0x041DU, "CP874"), std::pair(0x0503U, "CP1253"),
                                         std::pair(0x0504U, "CP1254"), std::pair(0x0505U, "CP1255"),
                                         std::pair(0x0507U, "CP1257"), std::pair(0x0508U, "CP1258")));

namespace {

struct Sample {
    CFStringEncoding encoding;
    const char *charset;
    const char16_t *text;
};

void PrintTo(const Sample &sample, std::ostream *stream)
{
    *stream << sample.charset;
}

class TextOfManyBytes : public testing::TestWithParam<Sample> {};

const Sample kSamples[] = {
    {0x0420, "CP932", u"\u65E5\u672C\u8A9E ABC \uFF76\uFF85 \u30AB\u30CA"},
    {0x0A01, "CP932", u"\u65E5\u672C\u8A9E ABC \uFF76\uFF85 \u30AB\u30CA"},
    {0x0421, "CP936", u"\u4E2D\u6587 ABC \u3002"},
    {0x0422, "CP949", u"\uD55C\uAD6D\uC5B4 ABC \uB620"},
    {0x0423, "CP950", u"\u4E2D\u6587 ABC \u3002"},
    {0x0631, "GBK", u"\u4E2D\u6587 ABC \u4E02"},
    {0x0632, "GB18030", u"\u4E2D\u6587 ABC \u00E9 \U0001F600"},
    {0x0820, "ISO-2022-JP", u"\u65E5\u672C\u8A9E ABC \u30AB\u30CA"},
    {0x0840, "ISO-2022-KR", u"\uD55C\uAD6D ABC"},
    {0x0920, "EUC-JP", u"\u65E5\u672C\u8A9E ABC \uFF76 \u4E02"},
    {0x0930, "EUC-CN", u"\u4E2D\u6587 ABC"},
    {0x0931, "EUC-TW", u"\u4E2D\u6587 ABC"},
    {0x0940, "EUC-KR", u"\uD55C\uAD6D\uC5B4 ABC"},
    {0x0A03, "BIG5", u"\u4E2D\u6587 ABC"},
    {0x0A06, "BIG5-HKSCS", u"\u4E2D\u6587 ABC"},
};

} // namespace

TEST_P(TextOfManyBytes, IsReadAndWrittenAsTheCLibraryDoes)
{
    const Sample &sample = GetParam();
    const std::optional<std::string> bytes = EncodedText(sample.text, sample.charset);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(Decode(*bytes, sample.encoding), sample.text);
    const std::optional<std::string> written = Encode(sample.text, sample.encoding);
    ASSERT_TRUE(written.has_value());
    EXPECT_EQ(DecodedText(*written, sample.charset), sample.text);
}

TEST_P(TextOfManyBytes, KeepsASCIIBytes)
{
    const Sample &sample = GetParam();
    const bool startsWithAnEscape = sample.encoding == 0x0840;
    for (int byte = 0; byte < 0x80; ++byte) {
        const bool shifts = byte == 0x0E || byte == 0x0F || byte == 0x1B;
        if (shifts)
            continue;
        const std::u16string text(1, static_cast<char16_t>(byte));
        EXPECT_EQ(Decode(OneByte(byte), sample.encoding), text) << byte;
        if (!startsWithAnEscape)
            EXPECT_EQ(Encode(text, sample.encoding), OneByte(byte)) << byte;
    }
}

INSTANTIATE_TEST_SUITE_P(All, TextOfManyBytes, testing::ValuesIn(kSamples));

TEST(UTF7, IsReadAndWritten)
{
    EXPECT_EQ(Decode("a+AOk-b", 0x04000100), u"a\u00E9b");
    EXPECT_EQ(Encode(u"a\u00E9b", 0x04000100), "a+AOk-b");
    EXPECT_EQ(Decode("+2D3eAA-", 0x04000100), u"\U0001F600");
}

TEST(CodePages, RefuseTextCutInsideACharacter)
{
    EXPECT_EQ(Decode("\x93", 0x0A01), std::nullopt);
    EXPECT_EQ(Decode("a\xD6", 0x0632), std::nullopt);
    EXPECT_EQ(Decode("\xB0", 0x0940), std::nullopt);
}

TEST(CodePages, RefuseCharactersThatTheyLack)
{
    EXPECT_EQ(Encode(u"\u65E5", kCFStringEncodingMacRoman), std::nullopt);
    EXPECT_EQ(Encode(u"\u65E5", kCFStringEncodingWindowsLatin1), std::nullopt);
    EXPECT_EQ(Encode(u"\u0141", kCFStringEncodingISOLatin1), std::nullopt);
    EXPECT_EQ(Encode(u"\u65E5", kCFStringEncodingNextStepLatin), std::nullopt);
    EXPECT_EQ(Encode(u"\U0001F600", 0x0A01), std::nullopt);
    EXPECT_EQ(Encode(std::u16string{0xD800}, 0x0632), std::nullopt);
}

TEST(CodePages, OfUnknownNumbersRefuseEverything)
{
    for (const CFStringEncoding encoding :
         {0xFFFFU, 0xFFFFFFFFU, 0x0001U, 0x0002U, 0x00FFU, 0x0200U, 0x0211U, 0x0509U, 0x0BFEU, 0x7FFFFFFFU}) {
        EXPECT_EQ(Decode("a", encoding), std::nullopt) << std::hex << encoding;
        EXPECT_EQ(Decode("", encoding), std::nullopt) << std::hex << encoding;
        EXPECT_EQ(Encode(u"a", encoding), std::nullopt) << std::hex << encoding;
    }
}

TEST(MacRoman, HasTheBytesThatOtherTablesDifferIn)
{
    const std::pair<int, char16_t> published[] = {
        {0xBD, 0x03A9}, {0xC6, 0x2206}, {0xDB, 0x20AC}, {0xF0, 0xF8FF}, {0x80, 0x00C4}, {0xCA, 0x00A0},
        {0xD7, 0x25CA}, {0xDE, 0xFB01}, {0xDF, 0xFB02}, {0xF5, 0x0131}, {0xFF, 0x02C7},
    };
    for (const auto &[byte, unit] : published)
        EXPECT_EQ(Decode(OneByte(byte), kCFStringEncodingMacRoman), std::u16string(1, unit));
}

TEST(NextStepLatin, IsFoundationsTableWithItsMistakesCorrected)
{
    // Foundation on Linux has presentation forms in these places.
    const std::map<int, char16_t> corrected = {
        {0xA9, 0x2019}, {0xAC, 0x2039}, {0xAD, 0x203A}, {0xB8, 0x201A}, {0xB9, 0x201E}};
    for (int byte = 0; byte < 0xFE; ++byte) {
        const std::string bytes = OneByte(byte);
        NSString *const foundations = [[[NSString alloc] initWithBytes:bytes.data()
                                                                length:1
                                                              encoding:NSNEXTSTEPStringEncoding] autorelease];
        const auto correction = corrected.find(byte);
        const std::u16string expected(1, correction == corrected.end() ? [foundations characterAtIndex:0]
                                                                       : correction->second);
        EXPECT_EQ(Decode(bytes, kCFStringEncodingNextStepLatin), expected) << std::hex << byte;
        EXPECT_EQ(Encode(expected, kCFStringEncodingNextStepLatin), bytes) << std::hex << byte;
    }
    EXPECT_EQ(Decode("\xFE", kCFStringEncodingNextStepLatin), std::nullopt);
    EXPECT_EQ(Decode("\xFF", kCFStringEncodingNextStepLatin), std::nullopt);
}

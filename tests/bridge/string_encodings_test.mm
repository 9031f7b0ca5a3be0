// Host strings in every encoding, in both directions, against the C library's converters.
#include <map>
#include <tuple>

#include "tests/bridge/encoding_test.h"

using qzlhost::Value;
using namespace std::string_literals;

namespace {

/// An encoding of one byte a character.
struct CodePage {
    const char *name;
    uint32_t encoding;
    const char *charset;
    /// The number of bytes that it defines, of 256.
    size_t defined;
    /// Bytes for which the C library's table differs from the published one.
    std::map<int, char16_t> differences = {};
};

const std::map<int, char16_t> kMacRomanDifferences = {{0xC6, 0x2206}, {0xF0, 0xF8FF}};

const CodePage kCodePages[] = {
    {"ASCII", 0x0600, "ASCII", 128},
    {"MacRoman", 0x0000, "MACINTOSH", 256, kMacRomanDifferences},
    {"UnknownAsMacRoman", 0xFFFF, "MACINTOSH", 256, kMacRomanDifferences},
    {"Latin1", 0x0201, "ISO-8859-1", 256},
    {"Latin2", 0x0202, "ISO-8859-2", 256},
    {"Latin3", 0x0203, "ISO-8859-3", 249},
    {"Latin4", 0x0204, "ISO-8859-4", 256},
    {"LatinCyrillic", 0x0205, "ISO-8859-5", 256},
    {"LatinArabic", 0x0206, "ISO-8859-6", 211},
    {"LatinGreek", 0x0207, "ISO-8859-7", 253},
    {"LatinHebrew", 0x0208, "ISO-8859-8", 220},
    {"Latin5", 0x0209, "ISO-8859-9", 256},
    {"Latin6", 0x020A, "ISO-8859-10", 256},
    {"LatinThai", 0x020B, "ISO-8859-11", 248},
    {"Latin7", 0x020D, "ISO-8859-13", 256},
    {"Latin8", 0x020E, "ISO-8859-14", 256},
    {"Latin9", 0x020F, "ISO-8859-15", 256},
    {"WindowsLatin1", 0x0500, "CP1252", 251},
    {"WindowsLatin2", 0x0501, "CP1250", 251},
    {"WindowsCyrillic", 0x0502, "CP1251", 255},
    {"WindowsGreek", 0x0503, "CP1253", 239},
    {"WindowsLatin5", 0x0504, "CP1254", 249},
    {"WindowsHebrew", 0x0505, "CP1255", 233},
    {"WindowsArabic", 0x0506, "CP1256", 256},
    {"WindowsBaltic", 0x0507, "CP1257", 244},
    {"WindowsVietnamese", 0x0508, "CP1258", 247},
    {"KOI8R", 0x0A02, "KOI8-R", 256},
};

/// Every byte that the page defines, and their text.
std::pair<std::string, std::u16string> AllOf(const CodePage &page)
{
    std::string bytes;
    std::u16string text;
    for (int number = 0; number < 256; ++number) {
        const char byte = static_cast<char>(number);
        const auto difference = page.differences.find(number);
        const auto character = difference != page.differences.end() ? std::u16string(1, difference->second)
                                                                    : DecodedText({&byte, 1}, page.charset);
        if (!character)
            continue;
        bytes += byte;
        text += *character;
    }
    return {bytes, text};
}

class CodePageByRoute : public EncodingTest,
                        public ::testing::WithParamInterface<std::tuple<CodePage, Route>> {};

/// A text in an encoding of several bytes a character.
struct Sample {
    const char *name;
    uint32_t encoding;
    const char *charset;
    std::u16string text;
};

const std::u16string kWorld =
    u"plain gr\u00FC\u00DF \u0416 \u4E2D\u6587 \u3042 \U0001F600 \U00010000 \U0010FFFD \uFFFD \uE000";

const Sample kSamples[] = {
    {"UTF8", 0x08000100, "UTF-8", kWorld},
    {"UTF16", 0x0100, "UTF-16LE", kWorld},
    {"UTF16BE", 0x10000100, "UTF-16BE", kWorld},
    {"UTF16LE", 0x14000100, "UTF-16LE", kWorld},
    {"UTF32BE", 0x18000100, "UTF-32BE", kWorld},
    {"UTF32LE", 0x1C000100, "UTF-32LE", kWorld},
    {"ShiftJIS", 0x0A01, "CP932", u"\u65E5\u672C\u8A9E ABC \uFF76\uFF85 \u30AB\u30CA \u8868"},
    {"EUCJP", 0x0920, "EUC-JP", u"\u65E5\u672C\u8A9E ABC \uFF76 \u30AB\u30CA \u4E02"},
    {"GB18030", 0x0632, "GB18030", u"\u4E2D\u6587 ABC \u00E9 \u20AC \U0001F600"},
    {"Big5", 0x0A03, "BIG5", u"\u4E2D\u6587 ABC \u529F \u8A31"},
    {"EUCKR", 0x0940, "EUC-KR", u"\uD55C\uAD6D\uC5B4 ABC"},
    {"EUCCN", 0x0930, "EUC-CN", u"\u4E2D\u6587 ABC"},
};

class SampleByRoute : public EncodingTest, public ::testing::WithParamInterface<std::tuple<Sample, Route>> {};

template <typename Row>
std::string RowAndRoute(const ::testing::TestParamInfo<std::tuple<Row, Route>> &info)
{
    return std::string(std::get<0>(info.param).name) + "By" + NameOf(std::get<1>(info.param));
}

} // namespace

TEST_P(CodePageByRoute, EveryByteThatItDefinesIsRead)
{
    const auto &[page, route] = GetParam();
    const auto [bytes, text] = AllOf(page);
    StartOnRoute(route);

    EXPECT_EQ(bytes.size(), page.defined);
    EXPECT_EQ(Read(bytes, page.encoding), text);
}

TEST_P(CodePageByRoute, BuiltStringKeepsItsBytesAndReadsBack)
{
    const auto &[page, route] = GetParam();
    const auto [bytes, text] = AllOf(page);
    StartOnRoute(route);

    const Value built = Build(bytes, page.encoding);

    EXPECT_EQ(built.StringBytes(), bytes);
    EXPECT_EQ(built.StringEncoding(), page.encoding);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(built))), text);
}

TEST_P(CodePageByRoute, ItsTextComesOutAsUTF8)
{
    const auto &[page, route] = GetParam();
    const std::u16string text = AllOf(page).second.substr(1); // without the NUL, which would end it
    StartOnRoute(route);

    EXPECT_EQ(Write(text), EncodedText(text, "UTF-8"));
}

TEST_P(CodePageByRoute, EmptyStringIsEmpty)
{
    const auto &[page, route] = GetParam();
    StartOnRoute(route);

    EXPECT_EQ(Read("", page.encoding), u"");
}

INSTANTIATE_TEST_SUITE_P(All, CodePageByRoute,
                         ::testing::Combine(::testing::ValuesIn(kCodePages), ::testing::ValuesIn(kRoutes)),
                         RowAndRoute<CodePage>);

TEST_P(SampleByRoute, IsRead)
{
    const auto &[sample, route] = GetParam();
    const std::optional<std::string> bytes = EncodedText(sample.text, sample.charset);
    ASSERT_TRUE(bytes);
    StartOnRoute(route);

    EXPECT_EQ(Read(*bytes, sample.encoding), sample.text);
}

TEST_P(SampleByRoute, KeepsItsNULs)
{
    const auto &[sample, route] = GetParam();
    const std::u16string text = u'\0' + sample.text + u'\0' + sample.text + u'\0';
    const std::optional<std::string> bytes = EncodedText(text, sample.charset);
    ASSERT_TRUE(bytes);
    StartOnRoute(route);

    EXPECT_EQ(Read(*bytes, sample.encoding), text);
}

TEST_P(SampleByRoute, BuiltStringReadsBack)
{
    const auto &[sample, route] = GetParam();
    const std::optional<std::string> bytes = EncodedText(sample.text, sample.charset);
    ASSERT_TRUE(bytes);
    StartOnRoute(route);

    const Value built = Build(*bytes, sample.encoding);

    const bool becomesUTF8 = sample.encoding == qzlhost::encoding::UTF16;
    EXPECT_EQ(built.StringEncoding(), becomesUTF8 ? qzlhost::encoding::UTF8 : sample.encoding);
    EXPECT_EQ(built.StringBytes(), becomesUTF8 ? EncodedText(sample.text, "UTF-8") : bytes);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(built))), sample.text);
}

TEST_P(SampleByRoute, CutInsideItsLastCharacterIsNilOrLosesItWhereCharactersHaveOneSize)
{
    const auto &[sample, route] = GetParam();
    const size_t wide = sample.text.find_first_of(u"\u00FC\u65E5\u4E2D\uD55C");
    const std::optional<std::string> bytes = EncodedText(u"ab" + sample.text.substr(wide, 1), sample.charset);
    ASSERT_TRUE(bytes);
    StartOnRoute(route);

    const auto read = Read(bytes->substr(0, bytes->size() - 1), sample.encoding);

    const bool hasUnits = std::string_view(sample.charset).substr(0, 4) == "UTF-" && sample.name != "UTF8"s;
    EXPECT_EQ(read, hasUnits ? std::optional<std::u16string>(u"ab") : std::nullopt);
}

TEST_P(SampleByRoute, EmptyStringIsEmpty)
{
    const auto &[sample, route] = GetParam();
    StartOnRoute(route);

    EXPECT_EQ(Read("", sample.encoding), u"");
}

INSTANTIATE_TEST_SUITE_P(All, SampleByRoute,
                         ::testing::Combine(::testing::ValuesIn(kSamples), ::testing::ValuesIn(kRoutes)),
                         RowAndRoute<Sample>);

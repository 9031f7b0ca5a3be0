// Host strings of bytes: which host functions make them, in which order, and of which bytes.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "frame/host_strings.h"
#include "tests/support/linked_test.h"
#include "tests/support/texts.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr char kText[] = "text";
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

using StringBuilding = LinkedTest;
/// UTF-16 or UTF-32.
class StringBuildingByUnit : public LinkedTest, public ::testing::WithParamInterface<uint32_t> {};
class StringBuildingByVersion : public LinkedTest, public ::testing::WithParamInterface<double> {
protected:
    // A version that is no number is below every other.
    static bool IsAtLeast(double version) { return GetParam() >= version; }
};

std::string NameOfVersion(double version)
{
    if (std::isnan(version))
        return "NoNumber";
    return std::to_string(std::lround(version * 100));
}

Value Build(std::string_view bytes, uint32_t encoding)
{
    return Owned(REALBuildUnicodeString(bytes.data(), static_cast<int64_t>(bytes.size()), encoding));
}

// Replacements of host functions, and their arguments.

const char *gBytes;
int32_t gLength;
uint32_t gEncoding;
std::vector<REALstring> gConverted;
std::u16string gUnits;
/// The unit behind them.
char16_t gUnitBehind;
/// What they return, with its one reference.
REALstring gAnswer;

REALstring Note(const char *bytes, int32_t length)
{
    gBytes = bytes;
    gLength = length;
    return gAnswer;
}

REALstring NoteWithEncoding(const char *bytes, int32_t length, uint32_t encoding)
{
    gEncoding = encoding;
    return Note(bytes, length);
}

REALstring NoteAndConvert(REALstring string, uint32_t encoding)
{
    gConverted.push_back(string);
    gEncoding = encoding;
    return gAnswer;
}

REALstring NoteUnits(const char *bytes, int32_t length)
{
    const auto *const units = reinterpret_cast<const char16_t *>(bytes);
    gUnits.assign(units, static_cast<size_t>(length) / sizeof(char16_t));
    gUnitBehind = units[gUnits.size()];
    return nullptr;
}

/// A string for a replacement to return, with one reference.
REALstring NewString(Host &host, std::string_view bytes)
{
    const auto build =
        reinterpret_cast<REALstring (*)(const char *, int32_t)>(host.Resolver()("REALBuildString"));
    return build(bytes.data(), static_cast<int32_t>(bytes.size()));
}

} // namespace

TEST_F(StringBuilding, OfNoBytesIsTheNullString)
{
    Host &host = Start();
    for (const uint32_t encoding :
         {qzlhost::encoding::UTF8, qzlhost::encoding::UTF16, qzlhost::encoding::UTF32}) {
        EXPECT_EQ(REALBuildUnicodeString(nullptr, 4, encoding), nullptr);
        for (const int64_t length : {int64_t{0}, int64_t{-1}, int64_t{-0x100000000 + 4}, int64_t{0x80000000},
                                     int64_t{0x100000004}, std::numeric_limits<int64_t>::max()})
            EXPECT_EQ(REALBuildUnicodeString("text", length, encoding), nullptr) << length;
    }
    EXPECT_TRUE(host.Trace().empty());
}

TEST_F(StringBuilding, TakesUpTo0x7FFFFFFFBytes)
{
    // The functions only note the length: there are no such bytes.
    Host &host = Start(2024.01, [](Host &unloaded) {
        gAnswer = NewString(unloaded, "built");
        unloaded.Replace("REALBuildString", reinterpret_cast<void *>(&Note));
    });

    const Value string = Owned(REALBuildUnicodeString(kText, 0x7FFFFFFF, kCFStringEncodingUTF8));

    EXPECT_EQ(gBytes, kText);
    EXPECT_EQ(gLength, 0x7FFFFFFF);
    EXPECT_EQ(string.StringBytes(), "built");
    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(host.References(string), 1);
}

TEST_P(StringBuildingByUnit, TakesUpTo0x7FFFFFFFBytes)
{
    Start(2024.01, [](Host &unloaded) {
        gAnswer = NewString(unloaded, "built");
        unloaded.Replace("REALBuildStringWithEncoding", reinterpret_cast<void *>(&NoteWithEncoding));
    });

    EXPECT_EQ(Owned(REALBuildUnicodeString(kText, 0x7FFFFFFF, GetParam())).StringBytes(), "built");
    EXPECT_EQ(gBytes, kText);
    EXPECT_EQ(gLength, 0x7FFFFFFF);
    EXPECT_EQ(gEncoding, GetParam());
}

TEST_P(StringBuildingByUnit, ConvertsTheNullStringWhereTheHostBuildsNone)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Fail("REALBuildStringWithEncoding");
        gAnswer = NewString(unloaded, "converted");
        unloaded.Replace("REALConvertString", reinterpret_cast<void *>(&NoteAndConvert));
    });

    const Value string = Build("text", GetParam());

    EXPECT_EQ(gConverted, std::vector<REALstring>{nullptr});
    EXPECT_EQ(gEncoding, qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "converted");
    EXPECT_EQ(host.CallsOf("REALBuildStringWithEncoding"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 0);
}

TEST_P(StringBuildingByUnit, IsNullWhereTheHostConvertsNothing)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail("REALConvertString"); });

    EXPECT_EQ(REALBuildUnicodeString("text", 4, GetParam()), nullptr);

    EXPECT_EQ(FunctionsCalled(host), (std::vector<std::string>{"REALBuildStringWithEncoding",
                                                               "REALConvertString", "REALUnlockString"}));
}

INSTANTIATE_TEST_SUITE_P(Encodings, StringBuildingByUnit,
                         ::testing::Values(kCFStringEncodingUTF16, kCFStringEncodingUTF32));

TEST_F(StringBuilding, TagsBytesBelow0x80AsASCIIInEightBitEncodings)
{
    Start();
    for (const uint32_t encoding :
         {qzlhost::encoding::MacRoman, qzlhost::encoding::WindowsLatin1, qzlhost::encoding::Unknown}) {
        EXPECT_EQ(Build("plain\x7F", encoding).StringEncoding(), qzlhost::encoding::ASCII);
        for (const char *bytes : {"\x80plain", "pl\x80in", "plain\x80", "\xFF"}) {
            const Value kept = Build(bytes, encoding);
            EXPECT_EQ(kept.StringEncoding(), encoding);
            EXPECT_EQ(kept.StringBytes(), bytes);
        }
    }
    EXPECT_EQ(Build("plain", qzlhost::encoding::Latin1).StringEncoding(), qzlhost::encoding::Latin1);
    EXPECT_EQ(Build("plain", qzlhost::encoding::UTF8).StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(Build("plain", 0x0A01).StringEncoding(), 0x0A01u);
}

TEST_F(StringBuilding, KeepsBytesAndTagOfAnUnknownEncoding)
{
    Start();
    const std::string bytes("te\0xt\xFF", 6);
    const Value string = Build(bytes, 0x0BFE);
    EXPECT_EQ(string.StringBytes(), bytes);
    EXPECT_EQ(string.StringEncoding(), 0x0BFEu);
}

TEST_P(StringBuildingByVersion, OfBytesBuildsAndTags)
{
    Host &host = Start(GetParam());

    const Value string = Build("text", kCFStringEncodingISOLatin1);

    EXPECT_EQ(string.StringBytes(), "text");
    EXPECT_EQ(CallsWithArguments(host),
              (std::vector<std::string>{"REALBuildString(\"text\", 4)",
                                        "REALSetStringEncoding(\"text\" (String #1), 513)"}));
}

TEST_P(StringBuildingByVersion, OfBytesThatTheHostDoesNotBuildIsNull)
{
    Host &host = Start(GetParam(), [](Host &unloaded) { unloaded.Fail("REALBuildString"); });

    EXPECT_EQ(REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8), nullptr);

    EXPECT_EQ(FunctionsCalled(host), std::vector<std::string>{"REALBuildString"});
}

TEST_P(StringBuildingByVersion, OfUTF16ComesOutAsUTF8)
{
    Host &host = Start(GetParam());
    const std::u16string units = u"\u00E4\U0001F600";

    const Value string = Build(BytesOfUnits(units), kCFStringEncodingUTF16);

    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "\xC3\xA4\xF0\x9F\x98\x80");
    const std::vector<std::string> functions = FunctionsCalled(host);
    if (IsAtLeast(2012.0)) {
        EXPECT_EQ(functions, (std::vector<std::string>{"REALBuildStringWithEncoding", "REALConvertString",
                                                       "REALUnlockString"}));
    } else {
        EXPECT_EQ(functions, (std::vector<std::string>{"REALBuildString", "REALSetStringEncoding",
                                                       "REALConvertString", "REALUnlockString"}));
        EXPECT_THAT(CallsWithArguments(host).at(1), testing::EndsWith(", 256)")) << "tagged as UTF-16";
    }
}

TEST_P(StringBuildingByVersion, OfUTF16ThatTheHostDoesNotBuildIsNull)
{
    Host &host = Start(GetParam(), [](Host &unloaded) {
        unloaded.Fail("REALBuildString");
        unloaded.Fail("REALBuildStringWithEncoding");
    });

    EXPECT_EQ(REALBuildUnicodeStringUTF16(u"text", 8), nullptr);

    EXPECT_EQ(FunctionsCalled(host),
              IsAtLeast(2012.0)
                  ? (std::vector<std::string>{"REALBuildStringWithEncoding", "REALConvertString"})
                  : std::vector<std::string>{"REALBuildString"});
}

TEST_P(StringBuildingByVersion, OfUTF32ComesOutAsUTF8)
{
    Host &host = Start(GetParam());
    const std::u32string points = U"a\u00E4\U0001F600";

    const Value string = Build(BytesOfUnits(points), kCFStringEncodingUTF32);

    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "a\xC3\xA4\xF0\x9F\x98\x80");
    // Twelve bytes of UTF-32 where the host knows it, else four units of UTF-16.
    EXPECT_EQ(CallsWithArguments(host).at(0),
              IsAtLeast(2013.0)   ? "REALBuildStringWithEncoding(\"a\", 12, 201326848)"
              : IsAtLeast(2012.0) ? "REALBuildStringWithEncoding(\"a\", 8, 256)"
                                  : "REALBuildString(\"a\", 8)");
}

INSTANTIATE_TEST_SUITE_P(Versions, StringBuildingByVersion,
                         ::testing::Values(0.0, 2011.99, 2012.0, 2012.99, 2013.0, 2024.01, kNoNumber),
                         [](const auto &info) { return NameOfVersion(info.param); });

TEST_F(StringBuilding, OfUTF32GivesOldHostsUTF16WithSurrogatePairs)
{
    Start(2011.0,
          [](Host &unloaded) { unloaded.Replace("REALBuildString", reinterpret_cast<void *>(&NoteUnits)); });
    const std::u32string points = {0x1F600, 0xD7FF,  0xD800,   0xDBFF,   0xDC00,   0xDFFF,     0xE000,
                                   0xFFFF,  0x10000, 0x10FFFF, 0x110000, 0xD800FF, 0xFFFFFFFF, 1};

    Build(BytesOfUnits(points), kCFStringEncodingUTF32);

    EXPECT_EQ(gUnits, (std::u16string{0xD83D, 0xDE00, 0xD7FF, 0xE000, 0xFFFF, 0xD800, 0xDC00, 0xDBFF, 0xDFFF,
                                      0xFFFD, 0xFFFD, 0xFFFD, 1}));
}

TEST_F(StringBuilding, OfUTF32EndsItsUTF16WithAZeroUnit)
{
    Start(2011.0,
          [](Host &unloaded) { unloaded.Replace("REALBuildString", reinterpret_cast<void *>(&NoteUnits)); });
    // On either side of the length where the heap begins.
    for (const size_t count : std::initializer_list<size_t>{1, 199, 200, 1000}) {
        gUnitBehind = u'x';
        Build(BytesOfUnits(std::u32string(count, U'\U0001F600')), kCFStringEncodingUTF32);
        EXPECT_EQ(gUnits.size(), 2 * count);
        EXPECT_EQ(gUnitBehind, 0) << count;
    }
}

TEST_F(StringBuilding, OfLessThanOneCharacterOfUTF32IsEmpty)
{
    Host &host = Start(2011.0);
    const std::u32string points = U"a";
    for (const size_t length : std::initializer_list<size_t>{1, 2, 3})
        EXPECT_EQ(Build(BytesOfUnits(points).substr(0, length), kCFStringEncodingUTF32).StringBytes(), "");
    EXPECT_EQ(Build(BytesOfUnits(points), kCFStringEncodingUTF32).StringBytes(), "a");
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 0);
}

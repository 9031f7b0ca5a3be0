// Host strings and Cocoa strings, in both directions and on each kind of host.
#include "frame/host_strings.h"

#import <Foundation/Foundation.h>

#include <cstring>

#include "tests/support/linked_test.h"
#include "tests/support/texts.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using HostStrings = LinkedTest;

Value Convert(NSString *string)
{
    return Owned(CFString2RBString((CFStringRef)string));
}

Value Build(std::string_view bytes, uint32_t encoding)
{
    return Owned(REALBuildUnicodeString(bytes.data(), static_cast<int64_t>(bytes.size()), encoding));
}

struct Sample {
    const char *name;
    uint32_t encoding;
    std::string bytes;
    std::u16string text;
};

/// The texts and bytes are those of the encodings' published tables.
const std::vector<Sample> &Samples()
{
    static const std::vector<Sample> samples = {
        {"ASCII", qzlhost::encoding::ASCII, "plain", u"plain"},
        {"UTF8", qzlhost::encoding::UTF8, "gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80",
         u"gr\u00FC\u00DF \U0001F600"},
        {"MacRoman", qzlhost::encoding::MacRoman, "\x80\xDB", u"\u00C4\u20AC"},
        {"Latin1", qzlhost::encoding::Latin1, "\xE9\xFF", u"\u00E9\u00FF"},
        {"WindowsLatin1", qzlhost::encoding::WindowsLatin1, "\x80\x99", u"\u20AC\u2122"},
    };
    return samples;
}

/// A host version together with whether it answers with Core Foundation strings.
struct Route {
    const char *name;
    double version;
    bool answersCFStrings;
};

class NewNSStringByRoute : public LinkedTest, public ::testing::WithParamInterface<Route> {};

std::string RouteName(const ::testing::TestParamInfo<Route> &info)
{
    return info.param.name;
}

class UTF32ByVersion : public LinkedTest, public ::testing::WithParamInterface<double> {};
class UTF16ByVersion : public LinkedTest, public ::testing::WithParamInterface<double> {};
class LengthAroundTheBuffer : public LinkedTest, public ::testing::WithParamInterface<size_t> {};

} // namespace

TEST_P(NewNSStringByRoute, ReadsEveryEncoding)
{
    Host &host = Start(GetParam().version, [](Host &unloaded) {
        if (!GetParam().answersCFStrings)
            unloaded.Lack("REALGetStringCFString");
    });
    for (const Sample &sample : Samples()) {
        SCOPED_TRACE(sample.name);
        const Value string = Value::StringOfBytes(sample.bytes, sample.encoding);
        const int64_t references = host.References(string);
        NSString *const text = NewNSString(StringOf(string));
        ASSERT_NE(text, nil);
        EXPECT_EQ(UnitsOf(text), sample.text);
        EXPECT_EQ(host.References(string), references);
    }
}

TEST_P(NewNSStringByRoute, ReadsUTF16)
{
    Start(GetParam().version, [](Host &unloaded) {
        if (!GetParam().answersCFStrings)
            unloaded.Lack("REALGetStringCFString");
    });
    const std::u16string units = u"\u00E4\u4E2D\U0001F600";
    const Value string = Value::StringOfBytes(BytesOfUnits(units), qzlhost::encoding::UTF16);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), units);
}

TEST_P(NewNSStringByRoute, ReadsRawBytesAsMacRoman)
{
    Host &host = Start(GetParam().version);
    std::string bytes;
    for (int byte = 0x80; byte <= 0xFF; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const Value string = Value::StringOfBytes(bytes, qzlhost::encoding::Unknown);
    NSString *const text = NewNSString(StringOf(string));
    ASSERT_EQ([text length], 128u);
    EXPECT_EQ([text characterAtIndex:0], 0x00C4);           // A with diaeresis
    EXPECT_EQ([text characterAtIndex:0xCA - 0x80], 0x00A0); // no-break space
    EXPECT_EQ([text characterAtIndex:0xDB - 0x80], 0x20AC); // euro
    EXPECT_EQ([text characterAtIndex:0xF0 - 0x80], 0xF8FF); // the logo, in the private area
    EXPECT_EQ([text characterAtIndex:0x7F], 0x02C7);        // caron
    EXPECT_EQ(host.CallsOf("REALGetStringCFString"), 0);
}

INSTANTIATE_TEST_SUITE_P(Routes, NewNSStringByRoute,
                         ::testing::Values(Route{"New", 2024.01, true},
                                           Route{"NewWithoutCFStrings", 2024.01, false},
                                           Route{"Old", 2011.0, true},
                                           Route{"OldWithoutCFStrings", 2011.0, false},
                                           Route{"Unknown", 0.0, true}),
                         RouteName);

TEST_F(HostStrings, NullIsNil)
{
    Start();
    EXPECT_EQ(NewNSString(nullptr), nil);
}

TEST_F(HostStrings, EmptyStringThatIsNotNullIsEmpty)
{
    Start();
    const Value empty = Value::StringOfBytes("", qzlhost::encoding::UTF8);
    NSString *const text = NewNSString(StringOf(empty));
    ASSERT_NE(text, nil);
    EXPECT_EQ([text length], 0u);
}

TEST_F(HostStrings, HostThatGivesNoCFStringIsAskedTwiceFrom2012On)
{
    Host &host = Start(2012.0, [](Host &unloaded) { unloaded.Fail("REALGetStringCFString"); });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), u"text");
    EXPECT_EQ(host.AsksFor("REALGetStringCFString"), 2);
}

TEST_F(HostStrings, HostThatGivesNoCFStringIsAskedOnceBefore2012)
{
    Host &host = Start(2011.99, [](Host &unloaded) { unloaded.Fail("REALGetStringCFString"); });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), u"text");
    EXPECT_EQ(host.AsksFor("REALGetStringCFString"), 1);
}

TEST_F(HostStrings, MissingContentsOrLengthGivesNil)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("REALGetStringCFString");
        unloaded.AnswerFrom("StringGetCString", 2);
        unloaded.AnswerFrom("REALLoadGlobalMethod", 2);
    });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(NewNSString(StringOf(string)), nil) << "no contents, no length";
    EXPECT_TRUE([NewNSString(StringOf(string)) isEqualToString:@"text"]) << "both are there by now";
    EXPECT_TRUE([NewNSString(StringOf(string)) isEqualToString:@"text"]);
    EXPECT_EQ(host.AsksFor("REALLoadGlobalMethod"), 2);
}

TEST_F(HostStrings, LenBIsLoadedOnceWhenItIsThere)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("REALGetStringCFString"); });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    for (int round = 0; round < 3; ++round)
        EXPECT_NE(NewNSString(StringOf(string)), nil);
    EXPECT_EQ(host.CallsOf("REALLoadGlobalMethod"), 1);
    EXPECT_EQ(host.CallsOf("REALLockString"), 3);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 3);
}

TEST_F(HostStrings, WithoutLockingNothingIsUnlocked)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("REALGetStringCFString");
        unloaded.Lack("REALLockString");
    });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_NE(NewNSString(StringOf(string)), nil);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 0);
    EXPECT_EQ(host.References(string), 1);
}

TEST_F(HostStrings, NewStringIsNotTheCallersToRelease)
{
    Start();
    const Value string =
        Value::StringOfBytes("a text that is long enough to be an object", qzlhost::encoding::UTF8);
    NSString *text = nil;
    {
        const qzlhost::AutoreleasePool pool;
        text = [NewNSString(StringOf(string)) retain];
    }
    EXPECT_EQ([text retainCount], 1u);
    [text release];
}

TEST_F(HostStrings, EmptyCocoaStringIsTheNullString)
{
    Start();
    EXPECT_EQ(CFString2RBString(nullptr), nullptr);
    EXPECT_EQ(CFString2RBString((CFStringRef) @""), nullptr);
}

TEST_F(HostStrings, CocoaStringComesOutAsUTF8)
{
    Start();
    const Value string = Convert(CocoaString(u"gr\u00FC\u00DF \u4E2D \U0001F600"));
    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "gr\xC3\xBC\xC3\x9F \xE4\xB8\xAD \xF0\x9F\x98\x80");
}

TEST_F(HostStrings, CocoaStringEndsAtItsFirstNUL)
{
    Start();
    EXPECT_EQ(Convert(CocoaString(std::u16string(u"before\0after", 12))).StringBytes(), "before");
    EXPECT_EQ(CFString2RBString((CFStringRef)CocoaString(std::u16string(u"\0after", 6))), nullptr);
}

TEST_F(HostStrings, LoneSurrogateGivesTheNullString)
{
    Start();
    EXPECT_EQ(CFString2RBString((CFStringRef)CocoaString(u"a\xD800z")), nullptr);
    EXPECT_EQ(CFString2RBString((CFStringRef)CocoaString(std::u16string(150, u'a') + u"\xDC00")), nullptr);
}

TEST_P(LengthAroundTheBuffer, KeepsTheWholeText)
{
    Start();
    const size_t length = GetParam();
    EXPECT_EQ(Convert(CocoaString(std::u16string(length, u'a'))).StringBytes(), std::string(length, 'a'));
    std::string wide;
    for (size_t unit = 0; unit < length; ++unit)
        wide += "\xE4\xB8\xAD"; // the longest that one unit becomes
    EXPECT_EQ(Convert(CocoaString(std::u16string(length, u'\u4E2D'))).StringBytes(), wide);
}

INSTANTIATE_TEST_SUITE_P(Lengths, LengthAroundTheBuffer,
                         ::testing::Values(1, 2, 98, 99, 100, 101, 199, 200, 10000));

TEST_F(HostStrings, NoBytesGiveTheNullString)
{
    Host &host = Start();
    EXPECT_EQ(REALBuildUnicodeString(nullptr, 4, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(REALBuildUnicodeString("text", 0, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(REALBuildUnicodeString("text", -1, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(REALBuildUnicodeString("text", 0x80000000, kCFStringEncodingUTF8), nullptr);
    EXPECT_TRUE(host.Trace().empty());
}

TEST_F(HostStrings, BytesBelow0x80AreTaggedASCIIInEightBitEncodings)
{
    Start();
    for (const uint32_t encoding :
         {qzlhost::encoding::MacRoman, qzlhost::encoding::WindowsLatin1, qzlhost::encoding::Unknown}) {
        EXPECT_EQ(Build("plain\x7F", encoding).StringEncoding(), qzlhost::encoding::ASCII);
        const Value kept = Build("pl\x80in", encoding);
        EXPECT_EQ(kept.StringEncoding(), encoding);
        EXPECT_EQ(kept.StringBytes(), "pl\x80in");
    }
    EXPECT_EQ(Build("plain", qzlhost::encoding::Latin1).StringEncoding(), qzlhost::encoding::Latin1);
    EXPECT_EQ(Build("plain", qzlhost::encoding::UTF8).StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(Build("plain", 0x0A01).StringEncoding(), 0x0A01u);
}

TEST_P(UTF16ByVersion, HostThatBuildsNoStringGivesNull)
{
    Host &host = Start(GetParam(), [](Host &unloaded) {
        unloaded.Fail("REALBuildString");
        unloaded.Fail("REALBuildStringWithEncoding");
    });
    EXPECT_EQ(REALBuildUnicodeString("text", 4, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(host.CallsOf("REALSetStringEncoding"), 0);
    EXPECT_EQ(REALBuildUnicodeStringUTF16(u"text", 8), nullptr);
    EXPECT_EQ(host.CallsOf("REALConvertString"), GetParam() >= 2012.0 ? 1 : 0);
}

TEST_P(UTF16ByVersion, ComesOutAsUTF8)
{
    Host &host = Start(GetParam());
    const std::u16string units = u"\u00E4\U0001F600";
    const Value string = Build(BytesOfUnits(units), kCFStringEncodingUTF16);
    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "\xC3\xA4\xF0\x9F\x98\x80");
    const bool encodingAware = GetParam() >= 2012.0;
    EXPECT_EQ(host.CallsOf("REALBuildStringWithEncoding"), encodingAware ? 1 : 0);
    EXPECT_EQ(host.CallsOf("REALBuildString"), encodingAware ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Versions, UTF16ByVersion, ::testing::Values(0.0, 2011.99, 2012.0, 2024.01));

TEST_P(UTF32ByVersion, ComesOutAsUTF8)
{
    Host &host = Start(GetParam());
    const std::u32string points = U"a\u00E4\U0001F600";
    const Value string = Build(BytesOfUnits(points), kCFStringEncodingUTF32);
    EXPECT_EQ(string.StringEncoding(), qzlhost::encoding::UTF8);
    EXPECT_EQ(string.StringBytes(), "a\xC3\xA4\xF0\x9F\x98\x80");
    const qzlhost::TraceEntry built = host.Trace().at(0);
    EXPECT_EQ(built.function, GetParam() >= 2012.0 ? "REALBuildStringWithEncoding" : "REALBuildString");
    // Twelve bytes of UTF-32 where the host knows it, else four units of UTF-16.
    EXPECT_EQ(built.arguments, GetParam() >= 2013.0   ? "\"a\", 12, 201326848"
                               : GetParam() >= 2012.0 ? "\"a\", 8, 256"
                                                      : "\"a\", 8");
}

INSTANTIATE_TEST_SUITE_P(Versions, UTF32ByVersion,
                         ::testing::Values(0.0, 2011.99, 2012.0, 2012.99, 2013.0, 2024.01));

TEST_F(HostStrings, OldHostGetsUTF16WithSurrogatePairsForUTF32)
{
    Host &host = Start(2011.0);
    std::u32string points;
    points += char32_t{0x1F600};
    points += char32_t{0xD800};
    points += char32_t{0xDFFF};
    points += char32_t{0x110000};
    points += char32_t{0xFFFF};
    points += char32_t{0x10FFFF};
    // The host's own conversion is kept out: what was built for it is read.
    static std::u16string built;
    using Convert = REALstring (*)(REALstring, uint32_t);
    static constexpr Convert kSee = [](REALstring string, uint32_t) -> REALstring {
        const Value seen = Value::Share(reinterpret_cast<qzlhost::String *>(string));
        const std::string bytes = seen.StringBytes();
        built.assign(reinterpret_cast<const char16_t *>(bytes.data()), bytes.size() / 2);
        return nullptr;
    };
    host.Replace("REALConvertString", reinterpret_cast<void *>(kSee));
    EXPECT_TRUE(Build(BytesOfUnits(points), kCFStringEncodingUTF32).AsString().empty());
    EXPECT_EQ(built, (std::u16string{0xD83D, 0xDE00, 0xFFFD, 0xFFFF, 0xDBFF, 0xDFFF}));
}

TEST_F(HostStrings, UTF32OfManyPairsFitsItsBuffers)
{
    Start(2011.0);
    for (const size_t points : std::initializer_list<size_t>{1, 99, 100, 101, 199, 200, 201, 1000}) {
        std::string expected;
        for (size_t index = 0; index < points; ++index)
            expected += "\xF0\x9F\x98\x80";
        EXPECT_EQ(
            Build(BytesOfUnits(std::u32string(points, U'\U0001F600')), kCFStringEncodingUTF32).StringBytes(),
            expected)
            << points;
    }
}

TEST_F(HostStrings, IncompleteLastUTF32CharacterIsLeftOut)
{
    Start(2011.0);
    const std::u32string points = U"ab";
    EXPECT_EQ(Build(BytesOfUnits(points).substr(0, 7), kCFStringEncodingUTF32).StringBytes(), "a");
    EXPECT_TRUE(Build(BytesOfUnits(points).substr(0, 3), kCFStringEncodingUTF32).AsString().empty());
}

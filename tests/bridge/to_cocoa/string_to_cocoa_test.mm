// Host strings become Cocoa strings on each kind of host.
#include "bridge/to_cocoa/string_to_cocoa.h"

#import <Foundation/Foundation.h>

#include <limits>

#include "tests/support/host_declarations.h"
#include "tests/support/linked_test.h"
#include "tests/support/row_names.h"
#include "tests/support/texts.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using StringToCocoa = LinkedTest;

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

/// A host version, and whether the host has Core Foundation strings.
struct Route {
    const char *name;
    double version;
    bool hasCFStrings;
};

class StringByRoute : public LinkedTest, public ::testing::WithParamInterface<Route> {};

class BeforeCFStrings : public LinkedTest, public ::testing::WithParamInterface<double> {};
class CFStringByVersion : public LinkedTest, public ::testing::WithParamInterface<double> {};
class TextWithout : public LinkedTest, public ::testing::WithParamInterface<const char *> {};

} // namespace

TEST_P(StringByRoute, ReadsEveryEncoding)
{
    Host &host = Start(GetParam().version, [](Host &unloaded) {
        if (!GetParam().hasCFStrings)
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

TEST_P(StringByRoute, ReadsUTF16)
{
    Start(GetParam().version, [](Host &unloaded) {
        if (!GetParam().hasCFStrings)
            unloaded.Lack("REALGetStringCFString");
    });
    const std::u16string units = u"\u00E4\u4E2D\U0001F600";
    const Value string = Value::StringOfBytes(BytesOfUnits(units), qzlhost::encoding::UTF16);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), units);
}

TEST_P(StringByRoute, ReadsRawBytesAsMacRoman)
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

INSTANTIATE_TEST_SUITE_P(Routes, StringByRoute,
                         ::testing::Values(Route{"New", 2024.01, true},
                                           Route{"NewWithoutCFStrings", 2024.01, false},
                                           Route{"Old", 2011.0, true},
                                           Route{"OldWithoutCFStrings", 2011.0, false},
                                           Route{"Unknown", 0.0, true}),
                         kNameOfRow);

TEST_F(StringToCocoa, NullIsNil)
{
    Start();
    EXPECT_EQ(NewNSString(nullptr), nil);
}

TEST_F(StringToCocoa, EmptyStringThatIsNotNullIsEmpty)
{
    Start();
    const Value empty = Value::StringOfBytes("", qzlhost::encoding::UTF8);
    NSString *const text = NewNSString(StringOf(empty));
    ASSERT_NE(text, nil);
    EXPECT_EQ([text length], 0u);
}

TEST_F(StringToCocoa, HostThatGivesNoCFStringIsAskedTwiceFrom2012On)
{
    Host &host = Start(2012.0, [](Host &unloaded) { unloaded.Fail("REALGetStringCFString"); });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), u"text");
    EXPECT_EQ(host.AsksFor("REALGetStringCFString"), 2);
    EXPECT_EQ(host.CallsOf("REALGetStringCFString"), 2);
}

TEST_P(BeforeCFStrings, HostThatGivesNoCFStringIsAskedOnce)
{
    Host &host = Start(GetParam(), [](Host &unloaded) { unloaded.Fail("REALGetStringCFString"); });
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), u"text");
    EXPECT_EQ(host.AsksFor("REALGetStringCFString"), 1);
    EXPECT_EQ(host.CallsOf("REALGetStringCFString"), 1);
}

// A version that is no number is below every other.
INSTANTIATE_TEST_SUITE_P(Versions, BeforeCFStrings,
                         ::testing::Values(0.0, 2011.99, std::numeric_limits<double>::quiet_NaN()));

TEST_P(CFStringByVersion, IsAskedForOnceAndTheBytesAreNotIfTheHostHasOne)
{
    Host &host = Start(GetParam());
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), u"text");
    EXPECT_EQ(host.CallsOf("REALGetStringCFString"), 1);
    EXPECT_EQ(host.CallsOf("StringGetCString"), 0);
}

INSTANTIATE_TEST_SUITE_P(Versions, CFStringByVersion, ::testing::Values(0.0, 2011.99, 2012.0, 2024.01));

TEST_F(StringToCocoa, MissingContentsOrLengthGivesNil)
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

TEST_P(TextWithout, AFunctionForItsBytesIsNil)
{
    Host &host = StartLacking({"REALGetStringCFString", GetParam()});
    for (const uint32_t encoding :
         {qzlhost::encoding::UTF8, qzlhost::encoding::UTF16, qzlhost::encoding::Unknown}) {
        for (const char *bytes : {"", "text"}) {
            const Value string = Value::StringOfBytes(bytes, encoding);
            EXPECT_EQ(NewNSString(StringOf(string)), nil);
            EXPECT_EQ(host.References(string), 1);
        }
    }
    EXPECT_EQ(host.AsksFor(GetParam()), 6) << "asked again as long as it is missing";
}

INSTANTIATE_TEST_SUITE_P(Functions, TextWithout,
                         ::testing::Values("StringGetCString", "REALLoadGlobalMethod"), kParameterItself);

TEST_F(StringToCocoa, LenBIsLoadedOnceWhenItIsThere)
{
    Host &host = StartLacking({"REALGetStringCFString"});
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    for (int round = 0; round < 3; ++round)
        EXPECT_NE(NewNSString(StringOf(string)), nil);
    EXPECT_EQ(host.CallsOf("REALLoadGlobalMethod"), 1);
    EXPECT_EQ(ArgumentsOf(host, "REALLoadGlobalMethod"),
              std::vector<std::string>{std::string("null, \"") + kLenB + "\""});
    EXPECT_EQ(host.CallsOf("REALLockString"), 3);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 3);
}

TEST_F(StringToCocoa, WithoutLockingNothingIsUnlocked)
{
    Host &host = StartLacking({"REALGetStringCFString", "REALLockString"});
    const Value string = Value::StringOfBytes("text", qzlhost::encoding::UTF8);
    EXPECT_NE(NewNSString(StringOf(string)), nil);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 0);
    EXPECT_EQ(host.References(string), 1);
}

TEST_F(StringToCocoa, NewStringIsNotTheCallersToRelease)
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

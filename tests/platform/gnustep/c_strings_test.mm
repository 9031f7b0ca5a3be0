// CFStringGetCString: what fits, what does not, what is left behind.
#include "tests/platform/gnustep/port_testing.h"

#include <vector>

using namespace port_testing;

namespace {

struct Written {
    bool done;
    std::string buffer;
};

/// Converts into a buffer of exactly that size, on the heap so that a sanitizer sees its end.
Written WriteInto(size_t size, std::u16string_view text, CFStringEncoding encoding)
{
    std::vector<char> buffer(size, '\x7F');
    const OwnedString string = StringOf(text);
    const bool done =
        CFStringGetCString(string.get(), buffer.data(), static_cast<CFIndex>(size), encoding) != 0;
    return {done, std::string(buffer.begin(), buffer.end())};
}

} // namespace

TEST(CStrings, CountTheNULInTheSize)
{
    EXPECT_FALSE(WriteInto(3, u"abc", kCFStringEncodingUTF8).done);
    const Written written = WriteInto(4, u"abc", kCFStringEncodingUTF8);
    EXPECT_TRUE(written.done);
    EXPECT_EQ(written.buffer, std::string("abc\0", 4));
}

TEST(CStrings, LeaveTheRestOfTheBufferAlone)
{
    EXPECT_EQ(WriteInto(6, u"abc", kCFStringEncodingUTF8).buffer, std::string("abc\0\x7F\x7F", 6));
}

TEST(CStrings, FitToTheByteInEveryEncoding)
{
    const std::pair<CFStringEncoding, size_t> sizes[] = {
        {kCFStringEncodingUTF8, 3},
        {kCFStringEncodingUTF16, 4},
        {kCFStringEncodingUTF32, 8},
        {kCFStringEncodingMacRoman, 2},
        {kCFStringEncodingISOLatin1, 2},
        {kCFStringEncodingNextStepLatin, 2},
        {0x0632, 3},
        {kCFStringEncodingNonLossyASCII, 5},
    };
    for (const auto &[encoding, bytes] : sizes) {
        for (size_t size = 1; size <= bytes; ++size)
            EXPECT_FALSE(WriteInto(size, u"a\u00E9", encoding).done) << std::hex << encoding << " " << size;
        EXPECT_TRUE(WriteInto(bytes + 1, u"a\u00E9", encoding).done) << std::hex << encoding;
    }
}

TEST(CStrings, OfTextOfEachWidthFitToTheByte)
{
    for (const std::u16string_view text : {u"a", u"\u00E9", u"\u65E5", u"\U0001F600"}) {
        const std::string bytes = *Encode(text, kCFStringEncodingUTF8);
        for (size_t size = 1; size <= bytes.size(); ++size)
            EXPECT_FALSE(WriteInto(size, text, kCFStringEncodingUTF8).done);
        EXPECT_EQ(WriteInto(bytes.size() + 1, text, kCFStringEncodingUTF8).buffer, bytes + '\0');
    }
}

TEST(CStrings, AreEmptyAfterAFailure)
{
    EXPECT_EQ(WriteInto(3, u"abcdef", kCFStringEncodingUTF8).buffer[0], '\0');
    EXPECT_EQ(WriteInto(9, u"\u65E5", kCFStringEncodingMacRoman).buffer[0], '\0');
    EXPECT_EQ(WriteInto(9, u"a", kCFStringEncodingInvalidId).buffer[0], '\0');
}

TEST(CStrings, OfNoTextAreANUL)
{
    const Written written = WriteInto(1, u"", kCFStringEncodingUTF8);
    EXPECT_TRUE(written.done);
    EXPECT_EQ(written.buffer, std::string("\0", 1));
}

TEST(CStrings, KeepNULCharacters)
{
    const Written written = WriteInto(5, std::u16string_view(u"a\0b\0", 4), kCFStringEncodingUTF8);
    EXPECT_TRUE(written.done);
    EXPECT_EQ(written.buffer, std::string("a\0b\0\0", 5));
}

TEST(CStrings, OfLoneSurrogatesFail)
{
    for (const std::u16string &text :
         {std::u16string{0xD800}, std::u16string{0xDC00}, std::u16string{'a', 0xD83D},
          std::u16string{0xDE00, 'a'}, std::u16string{0xDE00, 0xD83D},
          std::u16string{0xD83D, 0xD83D, 0xDE00}}) {
        EXPECT_FALSE(WriteInto(64, text, kCFStringEncodingUTF8).done);
        EXPECT_FALSE(WriteInto(64, text, kCFStringEncodingUTF32).done);
        EXPECT_FALSE(WriteInto(64, text, kCFStringEncodingMacRoman).done);
        EXPECT_TRUE(WriteInto(64, text, kCFStringEncodingUTF16).done);
    }
}

TEST(CStrings, OfLongTextHaveNoSeams)
{
    for (size_t before = 500; before < 1040; ++before) {
        const std::u16string text = std::u16string(before, u'x') + u"\U0001F600\u00E9\U0001F601";
        const std::string bytes = std::string(before, 'x') + "\xF0\x9F\x98\x80\xC3\xA9\xF0\x9F\x98\x81";
        const Written written = WriteInto(bytes.size() + 1, text, kCFStringEncodingUTF8);
        ASSERT_TRUE(written.done) << before;
        ASSERT_EQ(written.buffer, bytes + '\0') << before;
        ASSERT_FALSE(WriteInto(bytes.size(), text, kCFStringEncodingUTF8).done) << before;
    }
}

TEST(CStrings, OfLongTextWithALoneSurrogateFailWhereverItStands)
{
    for (size_t before = 500; before < 1040; ++before) {
        const std::u16string text = std::u16string(before, u'x') + char16_t(0xD83D) + u"y";
        ASSERT_FALSE(WriteInto(4096, text, kCFStringEncodingUTF8).done) << before;
        ASSERT_FALSE(WriteInto(4096, text.substr(0, before + 1), kCFStringEncodingUTF8).done) << before;
    }
}

TEST(CStrings, OfLongShiftedTextAreReadBackWhole)
{
    std::u16string text;
    for (int count = 0; count < 700; ++count)
        text += u"\u65E5a";
    const std::optional<std::string> bytes = Encode(text, 0x0820);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(Decode(*bytes, 0x0820), text);
}

TEST(CStrings, WorkForMutableAndConstantStrings)
{
    char buffer[16];
    NSMutableString *const mutableString = [NSMutableString stringWithString:@"ab"];
    [mutableString appendString:@"\u00E9"];
    EXPECT_TRUE(CFStringGetCString((CFStringRef)mutableString, buffer, sizeof buffer, kCFStringEncodingUTF8));
    EXPECT_STREQ(buffer, "ab\xC3\xA9");
    EXPECT_TRUE(CFStringGetCString(CFSTR("constant"), buffer, sizeof buffer, kCFStringEncodingUTF8));
    EXPECT_STREQ(buffer, "constant");
}

TEST(CStrings, OfImpossibleArgumentsFail)
{
    char buffer[4] = "abc";
    const OwnedString string = StringOf(u"a");
    EXPECT_FALSE(CFStringGetCString(nullptr, buffer, 4, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(string.get(), nullptr, 4, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(string.get(), buffer, 0, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(string.get(), buffer, -1, kCFStringEncodingUTF8));
    EXPECT_STREQ(buffer, "abc");
}

// UTF-8, UTF-16, UTF-32, ASCII: byte orders, marks, and what is refused.
#include "tests/platform/gnustep/port_testing.h"

#include "tests/support/texts.h"

using namespace port_testing;

namespace {

const std::u16string kText = u"a\u00E9\u65E5\U0001F600";
const std::string kUTF8 = "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80";
const std::string kUTF16BE("\0a\0\xE9\x65\xE5\xD8\x3D\xDE\0", 10);
const std::string kUTF16LE("a\0\xE9\0\xE5\x65\x3D\xD8\0\xDE", 10);
const std::string kUTF32BE("\0\0\0a\0\0\0\xE9\0\0\x65\xE5\0\x01\xF6\0", 16);
const std::string kUTF32LE("a\0\0\0\xE9\0\0\0\xE5\x65\0\0\0\xF6\x01\0", 16);

const std::string kMark8 = "\xEF\xBB\xBF";
const std::string kMark16BE = "\xFE\xFF";
const std::string kMark16LE = "\xFF\xFE";
const std::string kMark32BE("\0\0\xFE\xFF", 4);
const std::string kMark32LE("\xFF\xFE\0\0", 4);

std::u16string UnitsOfCodePoint(char32_t codePoint)
{
    if (codePoint < 0x10000)
        return {static_cast<char16_t>(codePoint)};
    return {static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)),
            static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};
}

} // namespace

TEST(UTF8, IsReadWithAndWithoutTheExternalFlag)
{
    EXPECT_EQ(Decode(kUTF8, kCFStringEncodingUTF8, true), kText);
    EXPECT_EQ(Decode(kUTF8, kCFStringEncodingUTF8, false), kText);
    EXPECT_EQ(Decode("plain", kCFStringEncodingUTF8), u"plain");
    EXPECT_EQ(Decode("", kCFStringEncodingUTF8), u"");
}

TEST(UTF8, LosesItsMarkOnlyAsAnExternalRepresentation)
{
    EXPECT_EQ(Decode(kMark8 + kUTF8, kCFStringEncodingUTF8, true), kText);
    EXPECT_EQ(Decode(kMark8 + kUTF8, kCFStringEncodingUTF8, false), u"\uFEFF" + kText);
    EXPECT_EQ(Decode(kMark8 + kMark8 + "a", kCFStringEncodingUTF8, true), u"\uFEFFa");
    EXPECT_EQ(Decode(kMark8, kCFStringEncodingUTF8, true), u"");
}

TEST(UTF8, OfEveryCodePointGoesBothWays)
{
    for (char32_t codePoint = 1; codePoint <= 0x10FFFF; codePoint += codePoint < 0x3000 ? 1 : 7) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF)
            continue;
        const std::u16string units = UnitsOfCodePoint(codePoint);
        const std::string bytes = *EncodedText(units, "UTF-8");
        ASSERT_EQ(Decode(bytes, kCFStringEncodingUTF8, false), units) << std::hex << uint32_t(codePoint);
        ASSERT_EQ(Encode(units, kCFStringEncodingUTF8), bytes) << std::hex << uint32_t(codePoint);
    }
}

TEST(UTF8, ThatIsNotWellFormedIsRefused)
{
    for (const char *const bytes :
         {"\x80", "a\xC3", "\xC3(", "\xE6\x97", "\xF0\x9F\x98", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80",
          "\xF0\x80\x80\x80", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80",
          "\xFE", "\xFF", "\xE9tude"})
        EXPECT_EQ(Decode(bytes, kCFStringEncodingUTF8), std::nullopt) << bytes;
}

TEST(UTF8, KeepsNULCharacters)
{
    EXPECT_EQ(Decode(std::string("a\0\xC3\xA9\0", 5), kCFStringEncodingUTF8),
              std::u16string(u"a\0\u00E9\0", 4));
    EXPECT_EQ(Decode(std::string("a\0b", 3), kCFStringEncodingUTF8), std::u16string(u"a\0b", 3));
}

TEST(UTF8, OfLongTextIsReadWhole)
{
    std::string bytes;
    std::u16string units;
    for (int count = 0; count < 10000; ++count) {
        bytes += kUTF8;
        units += kText;
    }
    EXPECT_EQ(Decode(bytes, kCFStringEncodingUTF8), units);
    EXPECT_EQ(Encode(units, kCFStringEncodingUTF8), bytes);
    EXPECT_EQ(Decode(std::string(5000, 'x'), kCFStringEncodingUTF8), std::u16string(5000, u'x'));
}

TEST(UTF16, WithoutAMarkIsBigEndianOutsideAndInHostOrderInside)
{
    EXPECT_EQ(Decode(kUTF16BE, kCFStringEncodingUTF16, true), kText);
    EXPECT_EQ(Decode(kUTF16LE, kCFStringEncodingUTF16, false), kText);
}

TEST(UTF16, WithAMarkIsInItsOrder)
{
    EXPECT_EQ(Decode(kMark16BE + kUTF16BE, kCFStringEncodingUTF16, true), kText);
    EXPECT_EQ(Decode(kMark16LE + kUTF16LE, kCFStringEncodingUTF16, true), kText);
    EXPECT_EQ(Decode(kMark16LE, kCFStringEncodingUTF16, true), u"");
}

TEST(UTF16, KeepsAMarkInside)
{
    EXPECT_EQ(Decode(kMark16LE + kUTF16LE, kCFStringEncodingUTF16, false), u"\uFEFF" + kText);
    EXPECT_EQ(Decode(std::string("a\0\xFF\xFE", 4), kCFStringEncodingUTF16, false), u"a\uFEFF");
}

TEST(UTF16, OfANamedOrderKeepsAMarkAsText)
{
    for (const bool external : {false, true}) {
        EXPECT_EQ(Decode(kUTF16BE, kCFStringEncodingUTF16BE, external), kText);
        EXPECT_EQ(Decode(kUTF16LE, kCFStringEncodingUTF16LE, external), kText);
        EXPECT_EQ(Decode(kMark16BE + kUTF16BE, kCFStringEncodingUTF16BE, external), u"\uFEFF" + kText);
        EXPECT_EQ(Decode(kMark16LE + kUTF16LE, kCFStringEncodingUTF16LE, external), u"\uFEFF" + kText);
    }
}

TEST(UTF16, KeepsLoneSurrogates)
{
    EXPECT_EQ(Decode(std::string("\xD8\0\0a", 4), kCFStringEncodingUTF16), (std::u16string{0xD800, 'a'}));
    EXPECT_EQ(Decode(std::string("\0a\xDC\0", 4), kCFStringEncodingUTF16), (std::u16string{'a', 0xDC00}));
}

TEST(UTF16, IgnoresHalfAUnitAtTheEnd)
{
    EXPECT_EQ(Decode(std::string("\0a\0", 3), kCFStringEncodingUTF16), u"a");
    EXPECT_EQ(Decode(std::string("\xFE", 1), kCFStringEncodingUTF16), u"");
}

TEST(UTF32, WithoutAMarkIsBigEndianOutsideAndInHostOrderInside)
{
    EXPECT_EQ(Decode(kUTF32BE, kCFStringEncodingUTF32, true), kText);
    EXPECT_EQ(Decode(kUTF32LE, kCFStringEncodingUTF32, false), kText);
    EXPECT_EQ(Decode(kUTF32LE, kCFStringEncodingUTF32, true), std::nullopt);
}

TEST(UTF32, WithAMarkIsInItsOrder)
{
    EXPECT_EQ(Decode(kMark32BE + kUTF32BE, kCFStringEncodingUTF32, true), kText);
    EXPECT_EQ(Decode(kMark32LE + kUTF32LE, kCFStringEncodingUTF32, true), kText);
}

TEST(UTF32, KeepsAMarkInsideAndInANamedOrder)
{
    EXPECT_EQ(Decode(kMark32LE + kUTF32LE, kCFStringEncodingUTF32, false), u"\uFEFF" + kText);
    EXPECT_EQ(Decode(kMark32BE + kUTF32BE, kCFStringEncodingUTF32BE, true), u"\uFEFF" + kText);
    EXPECT_EQ(Decode(kMark32LE + kUTF32LE, kCFStringEncodingUTF32LE, true), u"\uFEFF" + kText);
    EXPECT_EQ(Decode(kUTF32BE, kCFStringEncodingUTF32BE, false), kText);
    EXPECT_EQ(Decode(kUTF32LE, kCFStringEncodingUTF32LE, false), kText);
}

TEST(UTF32, RefusesSurrogatesAndWhatIsBeyondUnicode)
{
    EXPECT_EQ(Decode(std::string("\0\0\xD8\0", 4), kCFStringEncodingUTF32), std::nullopt);
    EXPECT_EQ(Decode(std::string("\0\0\xDF\xFF", 4), kCFStringEncodingUTF32), std::nullopt);
    EXPECT_EQ(Decode(std::string("\0\x11\0\0", 4), kCFStringEncodingUTF32), std::nullopt);
    EXPECT_EQ(Decode(std::string("\0\x10\xFF\xFF", 4), kCFStringEncodingUTF32), u"\U0010FFFF");
}

TEST(UTF32, IgnoresAPartOfAUnitAtTheEnd)
{
    EXPECT_EQ(Decode(std::string("\0\0\0a\0\0\0", 7), kCFStringEncodingUTF32), u"a");
    EXPECT_EQ(Decode(std::string("\0\0\xFE", 3), kCFStringEncodingUTF32), u"");
}

TEST(Unicode, IsWrittenInHostOrderOrTheNamedOne)
{
    EXPECT_EQ(Encode(kText + u'z', kCFStringEncodingUTF16BE), kUTF16BE + std::string("\0z", 2));
    EXPECT_EQ(Encode(kText, kCFStringEncodingUTF16LE), kUTF16LE);
    EXPECT_EQ(Encode(kText, kCFStringEncodingUTF16), kUTF16LE);
    EXPECT_EQ(Encode(kText + u'z', kCFStringEncodingUTF32BE), kUTF32BE + std::string("\0\0\0z", 4));
    EXPECT_EQ(Encode(kText, kCFStringEncodingUTF32LE), kUTF32LE);
    EXPECT_EQ(Encode(kText, kCFStringEncodingUTF32), kUTF32LE);
}

TEST(ASCII, ReadsHighBytesAsTheUnicodeCharacterOfThatNumber)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(Decode(bytes, kCFStringEncodingASCII), std::u16string(1, static_cast<char16_t>(byte)));
    }
}

TEST(ASCII, IsWrittenForASCIICharactersOnly)
{
    for (char16_t unit = 1; unit < 0x80; ++unit)
        EXPECT_EQ(Encode({&unit, 1}, kCFStringEncodingASCII), std::string(1, static_cast<char>(unit)));
    for (const char16_t unit : {u'\x80', u'\u00E9', u'\u0141', u'\u65E5'})
        EXPECT_EQ(Encode({&unit, 1}, kCFStringEncodingASCII), std::nullopt);
}

TEST(NonLossyASCII, EscapesAllOtherCharacters)
{
    EXPECT_EQ(Encode(u"a\u00E9\u65E5\\", kCFStringEncodingNonLossyASCII), "a\\351\\u65e5\\\\");
    EXPECT_EQ(Decode("a\\351\\u65e5\\\\", kCFStringEncodingNonLossyASCII), u"a\u00E9\u65E5\\");
    EXPECT_EQ(Decode("plain", kCFStringEncodingNonLossyASCII), u"plain");
}

TEST(Bytes, InImpossibleNumbersAreRefused)
{
    const UInt8 byte = 'a';
    EXPECT_EQ(CFStringCreateWithBytes(nullptr, &byte, -1, kCFStringEncodingUTF8, true), nullptr);
    EXPECT_EQ(CFStringCreateWithBytes(nullptr, nullptr, 1, kCFStringEncodingUTF8, true), nullptr);
    for (const CFStringEncoding encoding :
         {CFStringEncoding{kCFStringEncodingUTF8}, CFStringEncoding{kCFStringEncodingUTF16},
          CFStringEncoding{kCFStringEncodingUTF32}, CFStringEncoding{kCFStringEncodingMacRoman},
          CFStringEncoding{kCFStringEncodingASCII}, CFStringEncoding{kCFStringEncodingNonLossyASCII},
          CFStringEncoding{0x0632}}) {
        const OwnedString empty(CFStringCreateWithBytes(nullptr, nullptr, 0, encoding, true));
        ASSERT_NE(empty, nullptr) << std::hex << encoding;
        EXPECT_EQ(CFStringGetLength(empty.get()), 0);
    }
}

TEST(Bytes, OfACStringEndAtItsNUL)
{
    const OwnedString string(CFStringCreateWithCString(nullptr, "a\xC3\xA9", kCFStringEncodingUTF8));
    EXPECT_EQ(UnitsOf(string.get()), u"a\u00E9");
    EXPECT_EQ(CFStringCreateWithCString(nullptr, "\xE9", kCFStringEncodingUTF8), nullptr);
}

// Host strings and texts, through the functions that a library gets.
#include <cstring>

#include "tests/host/runtime_test.h"

namespace qzlhost {

namespace {

struct StringData {
    void *data;
    int64_t length;
    uint32_t encoding;
};

String *Build(const std::string &bytes, uint32_t encoding)
{
    return HostFunction<String *(const char *, int32_t, uint32_t)>("REALBuildStringWithEncoding")(
        bytes.data(), static_cast<int32_t>(bytes.size()), encoding);
}

Value Built(const std::string &bytes, uint32_t encoding)
{
    return Value::Adopt(Build(bytes, encoding));
}

Value Converted(const Value &string, uint32_t encoding)
{
    return Value::Adopt(
        HostFunction<String *(String *, uint32_t)>("REALConvertString")(string.StringPointer(), encoding));
}

int64_t LenB(const Value &string)
{
    void *const function = HostFunction<void *(void *, const char *)>("REALLoadGlobalMethod")(
        nullptr, "LenB( s as string ) as integer");
    return reinterpret_cast<int64_t (*)(String *)>(function)(string.StringPointer());
}

std::string Bytes(std::initializer_list<int> bytes)
{
    std::string text;
    for (const int byte : bytes)
        text.push_back(static_cast<char>(byte));
    return text;
}

} // namespace

using Strings = RuntimeTest;

TEST_F(Strings, ABuiltStringIsTaggedUnknownUntilSetOtherwise)
{
    const Value string =
        Value::Adopt(HostFunction<String *(const char *, int32_t)>("REALBuildString")("a\0b", 3));
    const auto encodingOf = HostFunction<uint32_t(String *)>("REALGetStringEncoding");
    EXPECT_EQ(encodingOf(string.StringPointer()), encoding::Unknown);
    HostFunction<void(String *, uint32_t)>("REALSetStringEncoding")(string.StringPointer(), encoding::ASCII);
    EXPECT_EQ(encodingOf(string.StringPointer()), encoding::ASCII);
    EXPECT_EQ(string.StringBytes(), std::string("a\0b", 3));
}

TEST_F(Strings, ContentsAndLengthCountBytes)
{
    const Value string = Value("gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(LenB(string), 6);
    EXPECT_STREQ(HostFunction<const char *(String *)>("StringGetCString")(string.StringPointer()),
                 "gr\xC3\xBC\xC3\x9F");
}

TEST_F(Strings, TheNullStringIsTheEmptyString)
{
    const Value empty = Value::EmptyString();
    EXPECT_EQ(empty.StringPointer(), nullptr);
    EXPECT_EQ(empty.Code(), code::String);
    EXPECT_FALSE(empty.IsNil());
    EXPECT_EQ(Value("").StringPointer(), nullptr);
    EXPECT_EQ(LenB(empty), 0);
    EXPECT_STREQ(HostFunction<const char *(String *)>("StringGetCString")(nullptr), "");
    EXPECT_EQ(Converted(empty, encoding::UTF8).StringPointer(), nullptr);
    HostFunction<void(String *)>("REALLockString")(nullptr);
    HostFunction<void(String *)>("REALUnlockString")(nullptr);
}

TEST_F(Strings, AStringWithoutBytesIsNotTheNullString)
{
    const Value string = Value::StringOfBytes("", encoding::UTF8);
    EXPECT_NE(string.StringPointer(), nullptr);
    EXPECT_EQ(LenB(string), 0);
    EXPECT_NE(Built("", encoding::UTF8).StringPointer(), nullptr);
}

struct EncodedText {
    uint32_t encoding;
    std::string bytes;
    std::string utf8;
};

TEST_F(Strings, EncodingsConvertToUtf8AndBack)
{
    const EncodedText texts[] = {
        {encoding::UTF8, "\xC3\xA9", "\xC3\xA9"},
        {encoding::Latin1, "\xE9", "\xC3\xA9"},
        {encoding::WindowsLatin1, "\x80", "\xE2\x82\xAC"},
        {encoding::MacRoman, "\x8E\xDB", "\xC3\xA9\xE2\x82\xAC"},
        {encoding::ASCII, "plain", "plain"},
        {encoding::UTF16, Bytes({0x3D, 0xD8, 0x00, 0xDE}), "\xF0\x9F\x98\x80"},
        {0x10000100, Bytes({0xD8, 0x3D, 0xDE, 0x00}), "\xF0\x9F\x98\x80"},
        {encoding::UTF32, Bytes({0x00, 0xF6, 0x01, 0x00}), "\xF0\x9F\x98\x80"},
        {0x18000100, Bytes({0x00, 0x01, 0xF6, 0x00}), "\xF0\x9F\x98\x80"},
        {0x0202, "\xB1", "\xC4\x85"},
        {0x0205, "\xB0", "\xD0\x90"},
        {0x020F, "\xA4", "\xE2\x82\xAC"},
        {0x0501, "\xB9", "\xC4\x85"},
        {0x0502, "\xC0", "\xD0\x90"},
        {0x0A01, "\x82\xA0", "\xE3\x81\x82"},
    };
    for (const EncodedText &text : texts) {
        SCOPED_TRACE(text.encoding);
        const Value string = Built(text.bytes, text.encoding);
        EXPECT_EQ(string.AsString(), text.utf8);
        const Value utf8 = Converted(string, encoding::UTF8);
        EXPECT_EQ(utf8.StringBytes(), text.utf8);
        EXPECT_EQ(utf8.StringEncoding(), encoding::UTF8);
        EXPECT_EQ(Converted(utf8, text.encoding).StringBytes(), text.bytes);
        EXPECT_EQ(Converted(utf8, text.encoding).StringEncoding(), text.encoding);
    }
}

TEST_F(Strings, BytesOfUnknownEncodingStayAsTheyAre)
{
    const Value raw = Built("\x80\xFF", encoding::Unknown);
    EXPECT_EQ(Converted(raw, encoding::UTF8).StringBytes(), "\x80\xFF");
    EXPECT_EQ(Converted(Built("\xE9", encoding::Latin1), encoding::Unknown).StringBytes(), "\xE9");
}

TEST_F(Strings, LoneSurrogatesBecomeReplacementCharactersInUtf8)
{
    EXPECT_EQ(Converted(Built(Bytes({0x00, 0xD8, 'a', 0}), encoding::UTF16), encoding::UTF8).StringBytes(),
              "\xEF\xBF\xBD"
              "a");
}

TEST_F(Strings, AByteOrderMarkIsText)
{
    EXPECT_EQ(Converted(Built(Bytes({0xFF, 0xFE, 'a', 0}), encoding::UTF16), encoding::UTF8).StringBytes(),
              "\xEF\xBB\xBF"
              "a");
}

TEST_F(Strings, ANumberThatIsNoEncodingConvertsToTheNullString)
{
    EXPECT_EQ(Converted(Built("a", 0x12345678), encoding::UTF8).StringPointer(), nullptr);
    EXPECT_EQ(Converted(Built("a", encoding::UTF8), 0x12345678).StringPointer(), nullptr);
}

TEST_F(Strings, StringDataIsACopyInTheEncodingAskedFor)
{
    const Value string = Value("\xC3\xA9");
    StringData data{};
    EXPECT_TRUE(HostFunction<bool(String *, uint32_t, StringData *)>("PluginGetStringData")(
        string.StringPointer(), encoding::UTF16, &data));
    EXPECT_EQ(data.length, 2);
    EXPECT_EQ(data.encoding, encoding::UTF16);
    EXPECT_EQ(std::memcmp(data.data, "\xE9\x00", 2), 0);
    HostFunction<void(StringData *)>("PluginDisposeStringData")(&data);
    EXPECT_EQ(data.data, nullptr);
    EXPECT_FALSE(HostFunction<bool(String *, uint32_t, StringData *)>("PluginGetStringData")(
        string.StringPointer(), 0x12345678, &data));
}

TEST_F(Strings, ReferencesAreCounted)
{
    const Value string = Value("text");
    EXPECT_EQ(host.References(string), 1);
    const Value copy = string;
    EXPECT_EQ(host.References(string), 2);
    HostFunction<void(String *)>("REALLockString")(string.StringPointer());
    EXPECT_EQ(host.References(string), 3);
    HostFunction<void(String *)>("REALUnlockString")(string.StringPointer());
    EXPECT_EQ(host.References(string), 2);
}

TEST_F(Strings, TextsAreLockedAndUnlocked)
{
    const Value text = Value::TextOf("gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(text.Code(), code::Text);
    HostFunction<void(Text *)>("PluginLockText")(text.TextPointer());
    EXPECT_EQ(host.References(text), 2);
    HostFunction<void(Text *)>("PluginUnlockText")(text.TextPointer());
    EXPECT_EQ(host.References(text), 1);
    EXPECT_EQ(text.AsString(), "gr\xC3\xBC\xC3\x9F");
}

TEST(StringMistakes, BadLengthsAreRecorded)
{
    Host host;
    const auto build = HostFunction<String *(const char *, int32_t)>("REALBuildString");
    EXPECT_EQ(build("a", -1), nullptr);
    EXPECT_EQ(build(nullptr, 1), nullptr);
    EXPECT_THAT(host.Mistakes(), testing::ElementsAre("REALBuildString: a string of -1 bytes",
                                                      "REALBuildString: a string of 1 bytes at null"));
}

} // namespace qzlhost

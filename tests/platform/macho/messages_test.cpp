// Messages do nothing to the terminal that shows them, whatever names are in them.
#include "platform/macho/messages.h"

#include <gtest/gtest.h>

using macho::Printable;

TEST(Messages, KeepTextOfEveryLanguage)
{
    for (const char *text : {"", "_objc_msgSend", "a\\b \"c\"~", "\u00A0\u00E9\u07FF",
                             "\u0800\uD7FF\uE000\uFFFF", "\U00010000\U0010FFFF"})
        EXPECT_EQ(Printable(text), text);
}

TEST(Messages, EscapeControlCharacters)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(Printable("a\0b\n\x1B[2Jc\x7F"sv), "a\\x00b\\x0a\\x1b[2Jc\\x7f");
    EXPECT_EQ(Printable("\xC2\x80|\xC2\x9B|\xC2\x9F"), "\\xc2\\x80|\\xc2\\x9b|\\xc2\\x9f");
}

TEST(Messages, EscapeWhatIsNotUtf8)
{
    // Bytes alone, cut off, too long, surrogates, beyond the last character.
    EXPECT_EQ(Printable("\x80 \xBF \xFF \xF8\x88\x80\x80\x80"),
              "\\x80 \\xbf \\xff \\xf8\\x88\\x80\\x80\\x80");
    EXPECT_EQ(Printable("\xC3 \xE2\x82 \xF0\x9F\x98"), "\\xc3 \\xe2\\x82 \\xf0\\x9f\\x98");
    EXPECT_EQ(Printable("\xC1\xA1 \xE0\x9F\xBF \xF0\x8F\xBF\xBF"),
              "\\xc1\\xa1 \\xe0\\x9f\\xbf \\xf0\\x8f\\xbf\\xbf");
    EXPECT_EQ(Printable("\xED\xA0\x80 \xF4\x90\x80\x80"), "\\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80");
}

TEST(Messages, OfErrorsAreEscapedOnce)
{
    const macho::LoadError error("_a\x1B[2J");
    EXPECT_STREQ(error.what(), "_a\\x1b[2J");
    EXPECT_STREQ(macho::LoadError(error.what()).what(), error.what());
}

// Core Foundation strings become host strings.
#include "frame/host_strings.h"

#import <Foundation/Foundation.h>

#include "tests/support/linked_test.h"
#include "tests/support/texts.h"

using qzlhost::Value;

namespace {

using HostStrings = LinkedTest;

Value Convert(NSString *string)
{
    return Owned(CFString2RBString((CFStringRef)string));
}

} // namespace

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

// The headers together, Core Foundation's before Cocoa's.
#include <pthread.h>

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>
#include <DiscRecording/DiscRecording.h>
#include <InstantMessage/IMService.h>

#include <AppKit/AppKit.h>
#include <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

TEST(Headers, HaveTheAllocatorThatIsNull)
{
    EXPECT_EQ(kCFAllocatorDefault, nullptr);
}

TEST(Headers, NumberTheEncodingsAsTheHostDoes)
{
    EXPECT_EQ(kCFStringEncodingMacRoman, 0);
    EXPECT_EQ(kCFStringEncodingUTF8, 0x08000100);
    EXPECT_EQ(kCFStringEncodingUTF16, 0x0100);
    EXPECT_EQ(kCFStringEncodingUTF32, 0x0C000100);
    EXPECT_EQ(kCFStringEncodingASCII, 0x0600);
    EXPECT_EQ(kCFStringEncodingWindowsLatin1, 0x0500);
    EXPECT_EQ(kCFStringEncodingISOLatin1, 0x0201);
}

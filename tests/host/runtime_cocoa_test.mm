// The Cocoa objects that the host returns, and its run loop.
#include <chrono>
#include <thread>

#import <Foundation/Foundation.h>

#include "tests/host/runtime_test.h"

namespace qzlhost {

namespace {

NSString *StringFor(String *string)
{
    return [HostFunction<NSString *(String *, int64_t)>("REALGetStringCFString")(string, 0) autorelease];
}

} // namespace

class Cocoa : public RuntimeTest {
protected:
    AutoreleasePool pool;
};

TEST_F(Cocoa, AStringBecomesACFStringWithOneRetain)
{
    const Value string = Value::StringOfBytes("gr\xFC\xDF", encoding::Latin1);
    NSString *const made =
        HostFunction<NSString *(String *, int64_t)>("REALGetStringCFString")(string.StringPointer(), 0);
    EXPECT_EQ([made retainCount], 1u);
    EXPECT_STREQ([made UTF8String], "gr\xC3\xBC\xC3\x9F");
    [made release];
}

TEST_F(Cocoa, Utf16KeepsLoneSurrogates)
{
    const char units[] = {0x00, static_cast<char>(0xD8), 'a', 0};
    const Value string = Value::StringOfBytes({units, sizeof units}, encoding::UTF16);
    NSString *const made = StringFor(string.StringPointer());
    ASSERT_EQ([made length], 2u);
    EXPECT_EQ([made characterAtIndex:0], 0xD800);
}

TEST_F(Cocoa, BytesThatAreNoTextBecomeNoCFString)
{
    const Value invalid = Value::StringOfBytes("\xC3(", encoding::UTF8);
    EXPECT_EQ(StringFor(invalid.StringPointer()), nil);
    const Value odd = Value::StringOfBytes("abc", encoding::UTF16);
    EXPECT_EQ(StringFor(odd.StringPointer()), nil);
    const Value raw = Value::StringOfBytes("abc", encoding::Unknown);
    EXPECT_EQ(StringFor(raw.StringPointer()), nil);
}

TEST_F(Cocoa, TheNullStringBecomesAnEmptyCFString)
{
    EXPECT_EQ([StringFor(nullptr) length], 0u);
    EXPECT_NE(StringFor(nullptr), nil);
}

TEST_F(Cocoa, ATextBecomesACFString)
{
    const Value text = Value::TextOf("gr\xC3\xBC\xC3\x9F");
    NSString *const made = HostFunction<NSString *(Text *)>("PluginCopyTextCFString")(text.TextPointer());
    EXPECT_EQ([made retainCount], 1u);
    EXPECT_STREQ([made UTF8String], "gr\xC3\xBC\xC3\x9F");
    [made release];
    EXPECT_EQ(HostFunction<NSString *(Text *)>("PluginCopyTextCFString")(nullptr), nil);
}

} // namespace qzlhost

@interface RunLoopProbe : NSObject {
@public
    bool onMainThread;
}
- (void)note;
@end

@implementation RunLoopProbe

- (void)note
{
    onMainThread = [NSThread isMainThread];
}

@end

namespace qzlhost {

TEST_F(Cocoa, ACppThreadMayWaitForTheMainThread)
{
    RunLoopProbe *const probe = [[RunLoopProbe alloc] init];
    std::atomic<bool> done{false};
    std::thread thread([&] {
        const AutoreleasePool pool;
        [probe performSelectorOnMainThread:@selector(note) withObject:nil waitUntilDone:YES];
        done = probe->onMainThread;
    });
    EXPECT_TRUE(host.RunUntil([&] { return done.load(); }, 10));
    thread.join();
    [probe release];
}

TEST_F(Cocoa, RunUntilEndsAfterItsTime)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(host.RunUntil([] { return false; }, 0.1));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
}

} // namespace qzlhost

// The main thread's name, and four threads at once.
#include "tests/platform/gnustep/port_testing.h"

#include <CoreServices/CoreServices.h>

#include <pthread.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

using namespace port_testing;

namespace {

/// Runs the work in four threads at once, each within a pool.
template <typename Work>
void InFourThreads(Work work)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([number, &work] {
            GSRegisterCurrentThread();
            @autoreleasepool {
                work(number);
            }
            GSUnregisterCurrentThread();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace

TEST(MainThread, IsTheFirstOne)
{
    EXPECT_EQ(pthread_main_np(), 1);
    int elsewhere = -1;
    std::thread([&elsewhere] { elsewhere = pthread_main_np(); }).join();
    EXPECT_EQ(elsewhere, 0);
}

TEST(FourThreads, ConvertText)
{
    const CFStringEncoding encodings[] = {kCFStringEncodingUTF8,
                                          kCFStringEncodingMacRoman,
                                          0x0501,
                                          0x0632,
                                          kCFStringEncodingNextStepLatin,
                                          0x0201};
    std::atomic<int> mistakes = 0;
    InFourThreads([&](int) {
        for (int round = 0; round < 500; ++round) {
            for (const CFStringEncoding encoding : encodings) {
                const std::optional<std::string> bytes = Encode(u"stra\u00DFe \u00FC", encoding);
                if (!bytes || Decode(*bytes, encoding) != u"stra\u00DFe \u00FC")
                    ++mistakes;
            }
        }
    });
    EXPECT_EQ(mistakes, 0);
}

TEST(FourThreads, MakeReferences)
{
    const std::string paths[] = {"/", "/tmp", "/etc", "/etc/passwd", "/usr/bin", "/dev/null", "/proc/self"};
    std::atomic<int> mistakes = 0;
    InFourThreads([&](int) {
        for (int round = 0; round < 200; ++round) {
            for (const std::string &path : paths) {
                FSRef reference;
                UInt8 buffer[1024];
                NSURL *const url = [NSURL
                    URLWithString:[@"file://"
                                      stringByAppendingString:[NSString stringWithUTF8String:path.c_str()]]];
                if (!CFURLGetFSRef((CFURLRef)url, &reference) ||
                    FSRefMakePath(&reference, buffer, sizeof buffer) != noErr ||
                    path != reinterpret_cast<char *>(buffer))
                    ++mistakes;
            }
        }
    });
    EXPECT_EQ(mistakes, 0);
}

TEST(FourThreads, GetTheSameReferenceOfAnItem)
{
    FSRef references[4];
    InFourThreads([&](int number) {
        CFURLGetFSRef((CFURLRef)[NSURL URLWithString:@"file:///usr/lib"], &references[number]);
    });
    for (const FSRef &reference : references)
        EXPECT_EQ(std::memcmp(&reference, &references[0], sizeof reference), 0);
}

TEST(FourThreads, AskForTypes)
{
    NSArray *const array = [NSArray arrayWithObject:@"text"];
    std::atomic<int> mistakes = 0;
    InFourThreads([&](int) {
        for (int round = 0; round < 2000; ++round) {
            if (CFGetTypeID(array) != CFArrayGetTypeID() ||
                CFGetTypeID(kCFBooleanTrue) != CFBooleanGetTypeID())
                ++mistakes;
            CFRelease(CFRetain(array));
        }
    });
    EXPECT_EQ(mistakes, 0);
    EXPECT_EQ([[array objectAtIndex:0] length], 4U);
}

TEST(FourThreads, UseADictionaryEach)
{
    std::atomic<int> mistakes = 0;
    InFourThreads([&](int) {
        const Owned<CFMutableDictionaryRef> dictionary(
            CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr));
        const std::string keys(1000, 'x');
        for (const char &key : keys)
            CFDictionarySetValue(dictionary.get(), &key, &key);
        for (const char &key : keys)
            if (CFDictionaryGetValue(dictionary.get(), &key) != &key)
                ++mistakes;
    });
    EXPECT_EQ(mistakes, 0);
}

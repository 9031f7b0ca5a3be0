// The main thread's name, and four threads at once.
#include "tests/platform/gnustep/port_testing.h"

#include <CoreServices/CoreServices.h>

#include <pthread.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// How often this thread has asked the system for its number.
thread_local int gQuestions;

/// What the work returns on a thread of its own.
template <typename Work>
auto OnAnotherThread(Work work)
{
    decltype(work()) result = {};
    std::thread([&] { result = work(); }).join();
    return result;
}

/// Two answers of this thread, as a number of two digits: the second one may be remembered.
int TwoAnswers()
{
    const int first = pthread_main_np();
    return 10 * first + pthread_main_np();
}

constexpr int kMain = 11;
constexpr int kOther = 0;

/// What the work returns in a child that this thread forks; a small number.
template <typename Work>
int InAChild(Work work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

} // namespace

/// Replaces the system's, so that its use can be counted.
extern "C" pid_t gettid() noexcept
{
    ++gQuestions;
    return static_cast<pid_t>(syscall(SYS_gettid));
}

TEST(MainThread, IsTheFirstOne)
{
    EXPECT_EQ(TwoAnswers(), kMain);
    EXPECT_EQ(OnAnotherThread(TwoAnswers), kOther);
    EXPECT_EQ(TwoAnswers(), kMain);
}

TEST(MainThread, OfAForkedChildIsTheOneThatForked)
{
    EXPECT_EQ(TwoAnswers(), kMain);
    EXPECT_EQ(InAChild(TwoAnswers), kMain);
    EXPECT_EQ(InAChild([] { return OnAnotherThread(TwoAnswers); }), kOther);

    const auto forked = OnAnotherThread([] {
        return std::vector{
            TwoAnswers(),
            InAChild(TwoAnswers),
            InAChild([] { return OnAnotherThread(TwoAnswers); }),
            InAChild([] { return OnAnotherThread([] { return TwoAnswers() + InAChild(TwoAnswers); }); }),
            TwoAnswers(),
        };
    });
    EXPECT_EQ(forked, (std::vector{kOther, kMain, kOther, kMain, kOther}));
}

TEST(MainThread, IsAskedForOnceAThread)
{
    const auto questions = [] {
        gQuestions = 0;
        TwoAnswers();
        TwoAnswers();
        return gQuestions;
    };
    EXPECT_EQ(OnAnotherThread(questions), 1);
    EXPECT_LE(questions(), 1);
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

// Posts from many threads at once, and many posts from one.
#include "check/groups.h"
#include "check/programs.h"

namespace {

constexpr int kThreads = 32, kPostsOfThread = 20, kPosts = 10000;

int gGot = 0;
bool gOnMainThread = true;

void Count(Instance, Instance)
{
    ++gGot;
    gOnMainThread = gOnMainThread && [NSThread isMainThread];
}

Instance CountingObserver()
{
    const Instance observer = NewObserver();
    observer->gotNotification = Count;
    AddObserver(DefaultCenter(kCenter), observer, @"Count");
    gGot = 0;
    return observer;
}

void PostMany(int count)
{
    for (int i = 0; i < count; ++i) {
        @autoreleasepool {
            [[NSNotificationCenter defaultCenter] postNotificationName:@"Count" object:nil];
        }
    }
}

} // namespace

void CheckThreads()
{
    Check(@"32 threads post 20 notifications each", @"640, all on the main thread", [] {
        CountingObserver();
        OnThreads(kThreads, [] { PostMany(kPostsOfThread); });
        return Text({ @(gGot), gOnMainThread ? @", all on the main thread" : @", some on other threads" });
    });
    Check(@"10,000 notifications", @"10000, 0 references left", [] {
        CountingObserver();
        const int64_t before = LivingReferences();
        PostMany(kPosts);
        return Text({ @(gGot), @", ", @(LivingReferences() - before), @" references left" });
    });
    Fact(@"Nanoseconds that a notification takes", nil, [] {
        CountingObserver();
        NSDate *const begin = [NSDate date];
        PostMany(kPosts);
        return Text({ @(static_cast<int64_t>(-[begin timeIntervalSinceNow] * 1e9 / kPosts)) });
    });
}

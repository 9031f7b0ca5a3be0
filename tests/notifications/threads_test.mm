// Notifications that many threads post at once, while the main thread runs its loop.
#import <Foundation/Foundation.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "family/family.h"
#include "tests/support/plugin_test.h"

using qzlhost::AutoreleasePool;
using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr double kPatience = 100;

/// Runs `body` in `count` threads, each with its number from 0 on, and the main thread's loop until all have
/// ended. Calls `meanwhile` between the loop's turns.
void RunThreads(
    Host &host, int count, const std::function<void(int)> &body,
    const std::function<void()> &meanwhile = [] {})
{
    std::atomic<int> ended{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < count; ++thread) {
        threads.emplace_back([&, thread] {
            body(thread);
            ++ended;
        });
    }
    EXPECT_TRUE(host.RunUntil(
        [&] {
            meanwhile();
            return ended == count;
        },
        kPatience));
    for (std::thread &thread : threads)
        thread.join();
}

void PostThroughTheLibrary(Host &host, const Value &center, int thread, int sequence)
{
    const Value userInfo = host.NewDictionary();
    host.DictionarySet(userInfo, "thread", thread);
    host.DictionarySet(userInfo, "sequence", sequence);
    host.Call(center, "postNotificationName", {"Counted", "an object", userInfo});
}

void PostThroughCocoa(int thread, int sequence)
{
    const AutoreleasePool pool;
    NSDictionary *const userInfo =
        [NSDictionary dictionaryWithObjectsAndKeys:[NSNumber numberWithInt:thread], @"thread",
                                                   [NSNumber numberWithInt:sequence], @"sequence", nil];
    [[NSNotificationCenter defaultCenter] postNotificationName:@"Counted"
                                                        object:@"an object"
                                                      userInfo:userInfo];
}

/// With the family's registry or without.
class ManyPosters : public PluginTest, public ::testing::WithParamInterface<bool> {};

using ObserversThatComeAndGo = PluginTest;

} // namespace

TEST_P(ManyPosters, EachResumesAfterItsOwnEventAndNothingIsLostDoubledOrOutOfOrder)
{
    constexpr int kPosters = 32;
    constexpr int kPosts = 1000;
    Host &host = Start();
    Family family(host);
    if (GetParam())
        family.OfferRegistry();
    std::array<std::atomic<int>, kPosters> handled{};
    int outOfOrder = 0;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        const Value userInfo = host.Get(notification, "userInfo");
        const int64_t thread = host.DictionaryGet(userInfo, "thread").AsInteger();
        const int64_t sequence = host.DictionaryGet(userInfo, "sequence").AsInteger();
        outOfOrder += handled.at(static_cast<size_t>(thread))++ == sequence ? 0 : 1;
        host.ClearTrace(); // It would take most of the memory.
    });
    const Value observer = program.NewObserver();
    const Value center = DefaultCenter(host);
    host.Call(center, "addObserver", {observer, "Counted"});

    std::atomic<int> resumedTooEarly{0};
    RunThreads(host, kPosters, [&](int thread) {
        for (int sequence = 0; sequence < kPosts; ++sequence) {
            if ((thread + sequence) % 2 == 0)
                PostThroughTheLibrary(host, center, thread, sequence);
            else
                PostThroughCocoa(thread, sequence);
            resumedTooEarly += handled.at(static_cast<size_t>(thread)) == sequence + 1 ? 0 : 1;
        }
    });

    EXPECT_EQ(program.received.size(), size_t{kPosters} * kPosts);
    for (const std::atomic<int> &count : handled)
        EXPECT_EQ(count, kPosts);
    EXPECT_EQ(outOfOrder, 0);
    EXPECT_EQ(resumedTooEarly, 0);
    for (const Received &event : program.received)
        ASSERT_TRUE(event.onMainThread);
}

INSTANTIATE_TEST_SUITE_P(Registry, ManyPosters, ::testing::Bool(), [](const auto &parameter) {
    return std::string(parameter.param ? "Known" : "Unknown");
});

TEST_F(ObserversThatComeAndGo, DisturbNoPostOfOtherThreads)
{
    constexpr int kPosters = 8;
    constexpr int kPosts = 500;
    constexpr size_t kFleeting = 4;
    Host &host = Start();
    std::function<void()> comeAndGo;
    int events = 0;
    ObserverProgram steady(host, "SteadyObserver", [&](const Value &) {
        if (++events % 10 == 0)
            comeAndGo();
    });
    ObserverProgram fleeting(host, "FleetingObserver");
    ObserverProgram brief(host, "BriefObserver");
    const Value center = DefaultCenter(host);
    const Value steadyObserver = steady.NewObserver();
    host.Call(center, "addObserver", {steadyObserver, "Crowded"});
    // These stay alive: a post that is under way may still reach an observer after its removal.
    std::array<Value, kFleeting> observers;
    for (Value &observer : observers)
        observer = fleeting.NewObserver();

    size_t rounds = 0;
    comeAndGo = [&] {
        const Value &observer = observers[rounds % kFleeting];
        const bool adds = rounds / kFleeting % 2 == 0;
        host.Call(center, adds ? "addObserver" : "removeObserver", {observer, "Crowded"});
        // Events arrive while an observer is freed: GNUstep then calls its daemon, and runs the loop
        // meanwhile.
        const std::string name = "Brief " + std::to_string(rounds++);
        const Value passing = brief.NewObserver();
        host.Call(center, "addObserver", {passing, name});
        host.Call(center, "postNotificationName", {name});
    };

    // The first time alone: GNUstep registers with its daemon, and an event in between would register again.
    comeAndGo();
    RunThreads(
        host, kPosters,
        [&](int) {
            for (int post = 0; post < kPosts; ++post)
                host.Call(center, "postNotificationName", {"Crowded"});
        },
        comeAndGo);

    EXPECT_EQ(steady.received.size(), size_t{kPosters} * kPosts);
    EXPECT_GE(rounds, size_t{kPosters} * kPosts / 10);
    EXPECT_EQ(brief.received.size(), rounds);
    for (const ObserverProgram *program : {&steady, &fleeting, &brief})
        for (const Received &event : program->received)
            ASSERT_TRUE(event.onMainThread);
    for (const Value &observer : observers)
        host.Call(center, "removeObserver", {observer});
    fleeting.received.clear();
    for (const Value &observer : observers)
        host.Call(center, "addObserver", {observer, "Afterwards"});
    host.Call(center, "postNotificationName", {"Afterwards"});
    EXPECT_EQ(fleeting.received.size(), kFleeting);
}

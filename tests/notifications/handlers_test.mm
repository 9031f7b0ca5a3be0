// What a program may do inside the event: add, remove and free observers, post again.
#import <Foundation/Foundation.h>

#include "tests/notifications/posting_test.h"
#include "tests/support/cocoa_objects.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using Handler = PostingTest;

} // namespace

TEST_P(Handler, MayRemoveItsOwnObserver)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    Value observer;
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &) { host.Call(center, "removeObserver", {observer}); });
    observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "Once"});

    Post(center, "Once");
    Post(center, "Once");

    EXPECT_EQ(program.received.size(), 1u);
}

TEST_P(Handler, MayRemoveAnotherObserver)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    Value removed;
    ObserverProgram other(host, "OtherObserver");
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &) { host.Call(center, "removeObserver", {removed}); });
    removed = other.NewObserver();
    const Value observer = program.NewObserver();
    host.Call(center, "addObserver", {removed, "Fewer"});
    host.Call(center, "addObserver", {observer, "Fewer"});

    Post(center, "Fewer");
    // The centre may have called the other before the removal.
    EXPECT_LE(other.received.size(), 1u);
    other.received.clear();
    Post(center, "Fewer");

    EXPECT_EQ(program.received.size(), 2u);
    EXPECT_TRUE(other.received.empty());
}

TEST_P(Handler, MayRemoveOrFreeTheObserverThatTheCentreWasToCallNext)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    for (const bool frees : {false, true}) {
        std::vector<Value> observers;
        // Whichever is called first frees or removes all three.
        ObserverProgram program(host, frees ? "Freeing" : "Removing", [&](const Value &) {
            if (frees)
                observers.clear();
            for (const Value &observer : observers)
                host.Call(center, "removeObserver", {observer});
        });
        for (int count = 0; count < 3; ++count) {
            observers.push_back(program.NewObserver());
            host.Call(center, "addObserver", {observers.back(), "OneOfThree"});
        }

        Post(center, "OneOfThree");

        EXPECT_EQ(program.received.size(), 1u);
        EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), frees ? 0 : 3);
    }
}

TEST_P(Handler, MayAddAnObserver)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    ObserverProgram other(host, "OtherObserver");
    const Value added = other.NewObserver();
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &) { host.Call(center, "addObserver", {added, "Later"}); });
    const Value observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "More"});

    Post(center, "More");
    Post(center, "Later");

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_EQ(other.received.size(), 1u);
}

TEST_P(Handler, MayFreeItsOwnObserverWhichLivesUntilItReturns)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    Value observer;
    int livedWithout = -1;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &notification) {
        observer = Value();
        livedWithout = LiveCocoaObjects("NSNotificationObserver");
        EXPECT_EQ(host.Get(notification, "Name").AsString(), "Last");
    });
    observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "Last"});

    Post(center, "Last");
    EXPECT_EQ(LiveCocoaObjects("NSNotificationObserver"), 0);
    Post(center, "Last");

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_EQ(livedWithout, 1);
}

TEST_P(Handler, MayPostAgainToADepthOf200)
{
    constexpr int kDepth = 200;
    Host &host = Start();
    const Value center = DefaultCenter(host);
    int depth = 0;
    int deepest = 0;
    int outerEndedFirst = 0;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) {
        const int mine = ++depth;
        deepest = std::max(deepest, depth);
        if (mine < kDepth)
            host.Call(center, "postNotificationName", {"Again"});
        outerEndedFirst += depth == mine ? 0 : 1;
        --depth;
    });
    const Value observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "Again"});

    Post(center, "Again");

    EXPECT_EQ(program.received.size(), size_t{kDepth});
    EXPECT_EQ(deepest, kDepth);
    EXPECT_EQ(outerEndedFirst, 0);
    EXPECT_EQ(depth, 0);
}

INSTANTIATE_TEST_SUITE_P(From, Handler, ::testing::Values(From::MainThread, From::AnotherThread), NameOf);

// Exceptions that leave a program's handler: who sees them, and that the next notification arrives as before.
#import <Foundation/Foundation.h>

#include "tests/notifications/delivery.h"
#include "tests/notifications/posting_test.h"
#include "tests/support/raising.h"

using qzlhost::Host;
using qzlhost::ProgramException;
using qzlhost::Value;

namespace {

using RaisingHandler = PostingTest;
using RaisingHandlerOfACocoaPost = PluginTest;

} // namespace

TEST_P(RaisingHandler, RaisesToAPosterOnTheMainThreadAndElseToTheLoop)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    bool raises = true;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) {
        if (raises)
            throw ProgramException(host.New("OutOfBoundsException"));
    });
    const Value observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "Raises"});

    const Outcome raised = Post(center, "Raises");
    raises = false;
    const Outcome quiet = Post(center, "Raises");

    const bool onMainThread = GetParam() == From::MainThread;
    EXPECT_EQ(raised.poster, onMainThread ? "OutOfBoundsException" : "");
    EXPECT_EQ(raised.loop, onMainThread ? "" : "OutOfBoundsException");
    EXPECT_EQ(quiet.poster, "");
    EXPECT_EQ(quiet.loop, "");
    EXPECT_EQ(program.received.size(), 2u);
}

TEST_P(RaisingHandler, ThatRaisesKeepsNoNotificationFromTheOtherObservers)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &) { throw ProgramException(host.New("OutOfBoundsException")); });
    const Value observers[] = {program.NewObserver(), program.NewObserver(), program.NewObserver()};
    for (const Value &observer : observers)
        host.Call(center, "addObserver", {observer, "Raises"});

    Post(center, "Raises");

    EXPECT_EQ(program.received.size(), std::size(observers));
}

TEST_P(RaisingHandler, WithACocoaExceptionEndsAloneAndNobodySeesIt)
{
    Host &host = Start();
    const Value center = DefaultCenter(host);
    ObserverProgram program(host, "ProgramObserver", [](const Value &) {
        [NSException raise:@"FromTheHandler" format:@"on purpose"];
    });
    ObserverProgram other(host, "OtherObserver");
    const Value observers[] = {other.NewObserver(), program.NewObserver(), other.NewObserver()};
    for (const Value &observer : observers)
        host.Call(center, "addObserver", {observer, "Raises"});

    for (int round = 0; round < 2; ++round) {
        const Outcome outcome = Post(center, "Raises");
        EXPECT_EQ(outcome.poster, "");
        EXPECT_EQ(outcome.loop, "");
    }

    EXPECT_EQ(program.received.size(), 2u);
    EXPECT_EQ(other.received.size(), 4u);
}

TEST_P(RaisingHandler, RaisesThroughAllThePostsThatItStandsIn)
{
    constexpr int kDepth = 20;
    Host &host = Start();
    const Value center = DefaultCenter(host);
    int depth = 0;
    int passed = 0;
    ObserverProgram program(host, "ProgramObserver", [&](const Value &) {
        if (++depth == kDepth)
            throw ProgramException(host.New("OutOfBoundsException"));
        host.Call(center, "postNotificationName", {"Again"});
        ++passed;
    });
    const Value observer = program.NewObserver();
    host.Call(center, "addObserver", {observer, "Again"});

    const Outcome outcome = Post(center, "Again");

    EXPECT_EQ(outcome.poster + outcome.loop, "OutOfBoundsException");
    EXPECT_EQ(program.received.size(), size_t{kDepth});
    EXPECT_EQ(passed, 0);
}

INSTANTIATE_TEST_SUITE_P(From, RaisingHandler, ::testing::Values(From::MainThread, From::AnotherThread),
                         NameOf);

TEST_F(RaisingHandlerOfACocoaPost, RaisesOnlyOnceAProgramIsThereToSeeIt)
{
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver",
                            [&](const Value &) { throw ProgramException(host.New("OutOfBoundsException")); });
    const Value observer = program.NewObserver();
    host.Call(DefaultCenter(host), "addObserver", {observer, "Raises"});

    EXPECT_EQ(ExceptionRaisedBy(
                  [] { [[NSNotificationCenter defaultCenter] postNotificationName:@"Raises" object:nil]; }),
              nil);

    EXPECT_EQ(program.received.size(), 1u);
    EXPECT_EQ(host.ClassOf(host.TakeException()), "OutOfBoundsException");
}

TEST_F(RaisingHandlerOfACocoaPost, KeepsItsCocoaExceptionFromASenderOnAnotherThread)
{
    Host &host = Start();
    ObserverProgram program(host, "ProgramObserver", [](const Value &) {
        [NSException raise:@"FromTheHandler" format:@"on purpose"];
    });
    const Value observer = program.NewObserver();
    std::atomic<bool> raised{false};
    std::atomic<bool> sent{false};

    std::thread poster([&] {
        const qzlhost::AutoreleasePool pool;
        raised = ExceptionRaisedBy([&] { Deliver(host, observer); }) != nil;
        sent = true;
    });
    EXPECT_TRUE(host.RunUntil([&] { return sent.load(); }, 30));
    poster.join();

    EXPECT_FALSE(raised);
    EXPECT_EQ(program.received.size(), 1u);
}

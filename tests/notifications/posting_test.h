// A test that posts on the main thread or on another.
#pragma once

#include <atomic>
#include <thread>

#include "tests/support/plugin_test.h"

/// The thread that posts: the main thread, or another while the main thread runs its loop.
enum class From { MainThread, AnotherThread };

class PostingTest : public PluginTest, public ::testing::WithParamInterface<From> {
protected:
    /// The classes of the host exceptions that the poster and the main thread's loop saw last; empty for
    /// none.
    struct Outcome {
        std::string poster;
        std::string loop;
    };

    /// Posts through the library. Returns once the post has returned.
    Outcome Post(const qzlhost::Value &center, const char *name)
    {
        Outcome outcome;
        const auto post = [&] {
            const qzlhost::AutoreleasePool pool;
            outcome.poster = ExceptionClassOf([&] { host().Call(center, "postNotificationName", {name}); });
        };
        if (GetParam() == From::MainThread) {
            post();
            return outcome;
        }
        std::atomic<bool> posted{false};
        std::thread poster([&] {
            post();
            posted = true;
        });
        while (!posted && !HasFailure()) {
            const std::string raised =
                ExceptionClassOf([&] { EXPECT_TRUE(host().RunUntil([&] { return posted.load(); }, 30)); });
            if (!raised.empty())
                outcome.loop = raised;
        }
        poster.join();
        return outcome;
    }
};

inline std::string NameOf(const ::testing::TestParamInfo<From> &parameter)
{
    return parameter.param == From::MainThread ? "MainThread" : "AnotherThread";
}

// A test with host programs in processes of their own, connected by a daemon of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>

#include "tests/support/peer.h"
#include "tests/support/value_model.h"

class ProcessTest : public ::testing::Test {
protected:
    /// Starts another program, which lives as long as the test.
    Peer &StartPeer(const std::string &name) { return peers_.emplace_back(*daemon_, name); }

    /// Returns once everything that `poster` has posted has raised its events in `observer`.
    static void Settle(Peer &poster, Peer &observer)
    {
        poster.Do({{"do", "settle"}});
        observer.Do({{"do", "settle"}});
    }

    /// Ends the programs. None of them may leak, or have misused its host.
    void TearDown() override
    {
        for (Peer &peer : peers_) {
            if (!peer.IsAlive())
                continue;
            EXPECT_EQ(peer.Quit(), (Json{{"leaks", Json::array()}, {"mistakes", Json::array()}}));
            EXPECT_EQ(peer.ExitStatus(), 0);
        }
        peers_.clear();
        daemon_.reset();
    }

private:
    std::optional<Daemon> daemon_{std::in_place};
    std::deque<Peer> peers_;
};

/// What each event has under this key.
inline std::vector<Json> Each(const char *key, const std::vector<Json> &events)
{
    std::vector<Json> contents;
    for (const Json &event : events)
        contents.push_back(event.at(key));
    return contents;
}

/// The command that observes notifications of this name; their events carry the observer's name.
inline Json ObserveName(const std::string &name, const std::string &observer = "observer")
{
    return {{"do", "observe"}, {"observer", observer}, {"name", name}};
}

/// The command that posts this name and an object.
inline Json PostName(const std::string &name, const std::string &object = "object")
{
    return {{"do", "post"}, {"name", name}, {"object", typed::String(object)}};
}

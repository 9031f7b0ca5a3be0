// Many notifications at once, and processes that stop taking part.
#include <csignal>

#include "tests/notifications/process_test.h"

namespace {

class ProcessLoad : public ProcessTest {
protected:
    std::vector<Peer *> StartPeers(const std::string &name, int count)
    {
        std::vector<Peer *> peers;
        for (int index = 0; index < count; ++index)
            peers.push_back(&StartPeer(name + " " + std::to_string(index)));
        return peers;
    }

    Peer &StartObserver(const std::string &name)
    {
        Peer &observer = StartPeer(name);
        observer.Do(ObserveName("Load"));
        return observer;
    }
};

/// The parameter: the command that ends it.
class ObserverThatEndsMeanwhile : public ProcessLoad, public ::testing::WithParamInterface<const char *> {};

/// The parameter: the observer that runs again first.
class ObserversThatDoNotRun : public ProcessLoad, public ::testing::WithParamInterface<int> {};

/// The command that posts `times` times, each with the poster and a sequence number from 0 on.
Json PostMany(int64_t poster, int64_t times)
{
    Json command = PostName("Load");
    command["times"] = times;
    command["info"] = typed::Dictionary({{"poster", typed::Integer(poster)}});
    return command;
}

int64_t IntegerIn(const Json &event, const char *key)
{
    for (const Json &entry : event.at("info").at("dictionary"))
        if (entry.at(0) == typed::String(key))
            return entry.at(1).at("integer");
    throw std::out_of_range(key);
}

/// The sequence numbers of each poster's posts, in the order of their events.
std::map<int64_t, std::vector<int64_t>> NumbersByPoster(const std::vector<Json> &events)
{
    std::map<int64_t, std::vector<int64_t>> numbers;
    for (const Json &event : events)
        numbers[IntegerIn(event, "poster")].push_back(IntegerIn(event, "sequence"));
    return numbers;
}

std::vector<int64_t> NumbersTo(int64_t count)
{
    std::vector<int64_t> numbers;
    for (int64_t number = 0; number < count; ++number)
        numbers.push_back(number);
    return numbers;
}

/// Events come from the run loop, not in the middle of what the program does.
void ExpectFromTheRunLoop(const std::vector<Json> &events)
{
    for (const Json &event : events)
        EXPECT_FALSE(event.contains("during")) << event.dump();
}

} // namespace

TEST_F(ProcessLoad, ThreeObserversGetTenThousandFromThreePostersEachOnceAndInOrder)
{
    constexpr int kPeers = 3;
    constexpr int64_t kTimes = 3334;
    const std::vector<Peer *> observers = StartPeers("observer", kPeers);
    const std::vector<Peer *> posters = StartPeers("poster", kPeers);
    for (Peer *const observer : observers)
        observer->Do(ObserveName("Load"));

    for (size_t poster = 0; poster < kPeers; ++poster)
        posters[poster]->Begin(PostMany(static_cast<int64_t>(poster), kTimes));
    for (Peer *const poster : posters)
        poster->Finish();

    for (Peer *const observer : observers) {
        const auto numbers = NumbersByPoster(observer->Events(kPeers * kTimes));
        ASSERT_EQ(numbers.size(), size_t{kPeers});
        for (const auto &[poster, received] : numbers)
            EXPECT_TRUE(received == NumbersTo(kTimes)) << "of poster " << poster;
    }
    for (Peer *const observer : observers) {
        Settle(*posters[0], *observer);
        EXPECT_TRUE(observer->RemainingEvents().empty());
    }
}

TEST_F(ProcessLoad, KilledObserverDisturbsNobody)
{
    constexpr int64_t kTimes = 1000;
    Peer &victim = StartObserver("victim");
    Peer &survivor = StartObserver("survivor");
    Peer &poster = StartPeer("poster");

    poster.Begin(PostMany(0, kTimes));
    victim.Events(10);
    victim.Kill();
    poster.Finish();

    EXPECT_TRUE(NumbersByPoster(survivor.Events(kTimes))[0] == NumbersTo(kTimes));
    Peer &late = StartObserver("late");
    poster.Do(PostMany(1, 1));
    EXPECT_EQ(IntegerIn(late.Events(1).at(0), "poster"), 1);
    EXPECT_EQ(IntegerIn(survivor.Events(1).at(0), "poster"), 1);
    EXPECT_EQ(victim.ExitStatus(), -SIGKILL);
}

TEST_F(ProcessLoad, KilledPosterDisturbsNobody)
{
    Peer &observer = StartObserver("observer");
    Peer &victim = StartPeer("victim");
    Peer &survivor = StartPeer("survivor");

    victim.Begin(PostMany(0, 1000000));
    std::vector<Json> events = observer.Events(100);
    victim.Kill();
    survivor.Do(PostMany(1, 100));

    // Any number of the victim's may have arrived.
    while (NumbersByPoster(events)[1].size() < 100)
        events.push_back(observer.Events(1).at(0));
    auto numbers = NumbersByPoster(events);
    EXPECT_EQ(numbers[0], NumbersTo(static_cast<int64_t>(numbers[0].size())));
    EXPECT_EQ(numbers[1], NumbersTo(100));
    Settle(survivor, observer);
    EXPECT_TRUE(observer.RemainingEvents().empty());
}

TEST_F(ProcessLoad, ObserverThatDoesNotRunHoldsNobodyUpAndGetsAllOfItLater)
{
    constexpr int64_t kTimes = 2000;
    Peer &sleeper = StartObserver("sleeper");
    Peer &awake = StartObserver("awake");
    Peer &poster = StartPeer("poster");

    sleeper.Stop(true);
    poster.Do(PostMany(0, kTimes));
    EXPECT_TRUE(NumbersByPoster(awake.Events(kTimes))[0] == NumbersTo(kTimes));
    EXPECT_TRUE(sleeper.RemainingEvents().empty());
    sleeper.Stop(false);
    EXPECT_TRUE(NumbersByPoster(sleeper.Events(kTimes))[0] == NumbersTo(kTimes));
}

TEST_P(ObserversThatDoNotRun, GetAllOfItInWhateverOrderTheyRunAgain)
{
    constexpr int64_t kTimes = 2000;
    Peer *const observers[] = {&StartObserver("observer 0"), &StartObserver("observer 1")};
    Peer &poster = StartPeer("poster");

    for (Peer *const observer : observers)
        observer->Stop(true);
    poster.Do(PostMany(0, kTimes));
    for (const int index : {GetParam(), 1 - GetParam()}) {
        observers[index]->Stop(false);
        EXPECT_TRUE(NumbersByPoster(observers[index]->Events(kTimes))[0] == NumbersTo(kTimes)) << index;
    }
}

INSTANTIATE_TEST_SUITE_P(First, ObserversThatDoNotRun, ::testing::Values(0, 1));

TEST_P(ObserverThatEndsMeanwhile, HearsNothingMore)
{
    Peer &observer = StartObserver("observer");
    Peer &poster = StartPeer("poster");

    poster.Begin(PostMany(0, 1000));
    ExpectFromTheRunLoop(observer.Events(100));
    observer.Do({{"do", GetParam()}, {"observer", "observer"}});
    const size_t heard = observer.EventsAtLastAnswer();
    poster.Finish();
    Settle(poster, observer);

    EXPECT_EQ(observer.EventsAtLastAnswer(), heard);
    EXPECT_LT(heard, 1000u);
    ExpectFromTheRunLoop(observer.RemainingEvents());
    observer.Do(ObserveName("Load", "another"));
    poster.Do(PostMany(1, 1));
    Settle(poster, observer);
    EXPECT_EQ(observer.EventsAtLastAnswer(), heard + 1);
}

INSTANTIATE_TEST_SUITE_P(Verbs, ObserverThatEndsMeanwhile, ::testing::Values("free", "remove"),
                         [](const auto &info) { return std::string(info.param); });

TEST_F(ProcessLoad, EventsComeFromTheRunLoopAlsoWhileTheProcessPosts)
{
    constexpr int64_t kTimes = 1000;
    Peer &first = StartObserver("first");
    Peer &second = StartObserver("second");

    first.Begin(PostMany(0, kTimes));
    second.Begin(PostMany(1, kTimes));
    first.Finish();
    second.Finish();

    for (Peer *const peer : {&first, &second}) {
        const std::vector<Json> events = peer->Events(2 * kTimes);
        ExpectFromTheRunLoop(events);
        for (const auto &[poster, numbers] : NumbersByPoster(events))
            EXPECT_TRUE(numbers == NumbersTo(kTimes)) << "of poster " << poster;
    }
}

// What an observer in a suspended process gets, and when.
#include "tests/notifications/process_test.h"

namespace {

constexpr int64_t kDrop = 1, kCoalesce = 2, kHold = 3, kDeliverImmediately = 4;

using Objects = std::vector<std::string>;

class ProcessSuspension : public ProcessTest {
protected:
    void Observe(int64_t behavior, const std::string &name = "Post")
    {
        Json command = ObserveName(name);
        command["object"] = nullptr;
        command["behavior"] = behavior;
        observer.Do(command);
    }

    void Suspend(bool suspended) { observer.Do({{"do", "suspend"}, {"value", suspended}}); }

    /// Posts with these objects, one after the other.
    void Post(const Objects &objects, const std::string &name = "Post")
    {
        for (const std::string &object : objects)
            poster.Do(PostName(name, object));
    }

    /// The same with an empty user info and the arguments in `extra`.
    void PostWith(const Json &extra, const Objects &objects)
    {
        for (const std::string &object : objects) {
            Json command = PostName("Post", object);
            command["info"] = typed::Dictionary({});
            command.update(extra);
            poster.Do(command);
        }
    }

    /// The objects that the observer has heard since the last call.
    Objects Heard()
    {
        Settle(poster, observer);
        Objects objects;
        for (const Json &event : observer.RemainingEvents())
            objects.push_back(event.at("object").at("string"));
        return objects;
    }

    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
};

struct BehaviorRow {
    const char *name;
    int64_t behavior;
    /// Of the posts 1, 2 and 3.
    Objects heardWhileSuspended;
    Objects heardOnceResumed;
};

class SuspensionBehavior : public ProcessSuspension, public ::testing::WithParamInterface<BehaviorRow> {};

struct WayRow {
    const char *name;
    /// The arguments of the post besides name, object and user info.
    Json extra;
    bool overrides;
};

class SuspendedPost : public ProcessSuspension, public ::testing::WithParamInterface<WayRow> {};

template <typename Row>
std::string NameOf(const ::testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

} // namespace

TEST_P(SuspensionBehavior, DecidesWhatArrivesAndWhen)
{
    const BehaviorRow &row = GetParam();
    Observe(row.behavior);
    Post({"before"});
    EXPECT_EQ(Heard(), (Objects{"before"}));

    Suspend(true);
    Post({"1", "2", "3"});
    EXPECT_EQ(Heard(), row.heardWhileSuspended);

    Suspend(false);
    EXPECT_EQ(Heard(), row.heardOnceResumed);

    Post({"after"});
    EXPECT_EQ(Heard(), (Objects{"after"}));
}

// Cocoa names four behaviours. The library passes others on as well; GNUstep treats them as the first.
INSTANTIATE_TEST_SUITE_P(
    All, SuspensionBehavior,
    ::testing::Values(BehaviorRow{"Drop", kDrop, {}, {}}, BehaviorRow{"Coalesce", kCoalesce, {}, {"3"}},
                      BehaviorRow{"Hold", kHold, {}, {"1", "2", "3"}},
                      BehaviorRow{"DeliverImmediately", kDeliverImmediately, {"1", "2", "3"}, {}},
                      BehaviorRow{"Unknown0", 0, {}, {}}, BehaviorRow{"Unknown5", 5, {}, {}}),
    NameOf<BehaviorRow>);

TEST_P(SuspensionBehavior, IsOverriddenByImmediateDelivery)
{
    const BehaviorRow &row = GetParam();
    Observe(row.behavior);
    Suspend(true);
    PostWith({{"deliverImmediately", true}}, {"1", "2"});
    PostWith({{"options", 1}}, {"3"});
    EXPECT_EQ(Heard(), (Objects{"1", "2", "3"}));
    Suspend(false);
    EXPECT_EQ(Heard(), Objects{});
}

TEST_P(SuspendedPost, ReachesTheSuspendedObserverWhereItOverrides)
{
    const WayRow &row = GetParam();
    Observe(kHold);
    Suspend(true);
    PostWith(row.extra, {"1", "2"});
    EXPECT_EQ(Heard(), row.overrides ? (Objects{"1", "2"}) : Objects{});
    Suspend(false);
    EXPECT_EQ(Heard(), row.overrides ? Objects{} : (Objects{"1", "2"}));
}

INSTANTIATE_TEST_SUITE_P(AllWays, SuspendedPost,
                         ::testing::Values(WayRow{"Inherited", Json::object(), false},
                                           WayRow{"Built", {{"built", true}}, false},
                                           WayRow{"NotImmediately", {{"deliverImmediately", false}}, false},
                                           WayRow{"Immediately", {{"deliverImmediately", true}}, true},
                                           WayRow{"Options0", {{"options", 0}}, false},
                                           WayRow{"Options1", {{"options", 1}}, true},
                                           WayRow{"Options2", {{"options", 2}}, false},
                                           WayRow{"Options3", {{"options", 3}}, true}),
                         NameOf<WayRow>);

TEST_F(ProcessSuspension, InheritedAddObserverCoalesces)
{
    observer.Do(ObserveName("Post"));
    Suspend(true);
    Post({"1", "2", "3"});
    EXPECT_EQ(Heard(), Objects{});
    Suspend(false);
    EXPECT_EQ(Heard(), (Objects{"3"}));
}

TEST_F(ProcessSuspension, WhatWasHeldComesBeforeWhatIsDeliveredImmediately)
{
    Observe(kHold);
    Suspend(true);
    Post({"1", "2"});
    PostWith({{"deliverImmediately", true}}, {"3"});
    EXPECT_EQ(Heard(), (Objects{"1", "2", "3"}));
    Suspend(false);
    EXPECT_EQ(Heard(), Objects{});
}

TEST_F(ProcessSuspension, ObserverOfImmediateDeliveryBringsWhatWasHeldForOthers)
{
    Observe(kHold, "Held");
    Observe(kDeliverImmediately, "Immediate");
    Suspend(true);
    Post({"1", "2"}, "Held");
    EXPECT_EQ(Heard(), Objects{});
    Post({"3"}, "Immediate");
    EXPECT_EQ(Heard(), (Objects{"1", "2", "3"}));
    Post({"4"}, "Held");
    EXPECT_EQ(Heard(), Objects{});
    Suspend(false);
    EXPECT_EQ(Heard(), (Objects{"4"}));
}

TEST_F(ProcessSuspension, HeldPostsAreGoneWithTheirObserver)
{
    Observe(kHold);
    Suspend(true);
    Post({"1"});
    EXPECT_EQ(Heard(), Objects{});
    observer.Do({{"do", "remove"}, {"observer", "observer"}});
    Suspend(false);
    EXPECT_EQ(Heard(), Objects{});
}

TEST_F(ProcessSuspension, MayBeRepeated)
{
    Observe(kHold);
    for (const char *object : {"first", "second", "third"}) {
        Suspend(true);
        Post({object});
        EXPECT_EQ(Heard(), Objects{});
        Suspend(true);
        EXPECT_EQ(Heard(), Objects{});
        Suspend(false);
        EXPECT_EQ(Heard(), (Objects{object}));
    }
}

TEST_F(ProcessSuspension, AffectsItsOwnProcessAlone)
{
    Observe(kHold);
    poster.Do(ObserveName("Post"));
    Suspend(true);
    EXPECT_EQ(observer.Do({{"do", "suspended"}}), true);
    EXPECT_EQ(poster.Do({{"do", "suspended"}}), false);

    Post({"1"});
    EXPECT_EQ(Heard(), Objects{});
    EXPECT_EQ(Each("object", poster.Events(1)), std::vector<Json>{typed::String("1")});

    Suspend(false);
    EXPECT_EQ(observer.Do({{"do", "suspended"}}), false);
    EXPECT_EQ(Heard(), (Objects{"1"}));
}

TEST_F(ProcessSuspension, SuspendedProcessMayPost)
{
    poster.Do(ObserveName("Reply"));
    Suspend(true);
    observer.Do(PostName("Reply"));
    EXPECT_EQ(poster.Events(1).at(0).at("name"), "Reply");
}

// Observing and posting between host processes, in every way that the classes offer.
#include "tests/notifications/process_test.h"

namespace {

using Processes = ProcessTest;

/// Both processes get their centre in one of the three ways.
class WayToTheCenter : public ProcessTest, public ::testing::WithParamInterface<const char *> {};

/// The parameter: whether addObserver gets a suspension behaviour.
class Observation : public ProcessTest, public ::testing::WithParamInterface<bool> {};

const Json kInfo = typed::Dictionary({{"key", typed::Integer(42)}});

/// Every way to post: the command's arguments, and what arrives of object and user info.
const struct {
    const char *way;
    Json arguments;
    Json object;
    Json info;
} kWaysToPost[] = {
    {"name", Json::object(), nullptr, nullptr},
    {"name, object", {{"object", typed::String("o")}}, typed::String("o"), nullptr},
    {"name, object, info", {{"object", typed::String("o")}, {"info", kInfo}}, typed::String("o"), kInfo},
    {"name, no object, info", {{"object", nullptr}, {"info", kInfo}}, nullptr, kInfo},
    {"options", {{"object", typed::String("o")}, {"info", kInfo}, {"options", 0}}, typed::String("o"), kInfo},
    {"options, no info",
     {{"object", typed::String("o")}, {"info", nullptr}, {"options", 3}},
     typed::String("o"),
     nullptr},
    {"options, empty object",
     {{"object", typed::String("")}, {"info", kInfo}, {"options", 1}},
     nullptr,
     kInfo},
    {"at once",
     {{"object", typed::String("o")}, {"info", kInfo}, {"deliverImmediately", true}},
     typed::String("o"),
     kInfo},
    {"not at once",
     {{"object", typed::String("o")}, {"info", kInfo}, {"deliverImmediately", false}},
     typed::String("o"),
     kInfo},
    {"built of a name", {{"built", true}}, nullptr, nullptr},
    {"built of all",
     {{"built", true}, {"object", typed::String("o")}, {"info", kInfo}},
     typed::String("o"),
     kInfo},
};

using Heard = std::map<std::string, std::vector<std::string>>;

/// Name and object of each event since the last call, in order, by observer.
Heard HeardByObserver(Peer &process)
{
    Heard heard;
    for (const Json &event : process.RemainingEvents()) {
        const Json &object = event.at("object");
        const std::string text = object.is_null() ? "-" : object.at("string").get<std::string>();
        heard[event.at("observer")].push_back(event.at("name").get<std::string>() + " " + text);
    }
    return heard;
}

/// Posts each of two names with each of two objects and with none.
void PostCombinations(Peer &poster)
{
    for (const char *name : {"N", "M"}) {
        for (const char *object : {"O", "P"})
            poster.Do(PostName(name, object));
        poster.Do({{"do", "post"}, {"name", name}});
    }
}

} // namespace

TEST_P(WayToTheCenter, EveryWayToPostArrives)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    Json observe = ObserveName("Posted");
    observe["center"] = GetParam();
    observer.Do(observe);
    for (const auto &row : kWaysToPost) {
        Json post = {{"do", "post"}, {"name", "Posted"}, {"center", GetParam()}};
        post.update(row.arguments);
        poster.Do(post);
        EXPECT_EQ(
            observer.Events(1).at(0),
            (Json{{"observer", "observer"}, {"name", "Posted"}, {"object", row.object}, {"info", row.info}}))
            << row.way;
    }
    Settle(poster, observer);
    EXPECT_TRUE(observer.RemainingEvents().empty());
}

INSTANTIATE_TEST_SUITE_P(All, WayToTheCenter,
                         ::testing::Values("New", "defaultCenter", "notificationCenterForType"),
                         [](const auto &info) { return std::string(info.param); });

TEST_F(Processes, AllThreeWaysLeadToOneCenter)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    for (const char *way : {"New", "defaultCenter", "notificationCenterForType"}) {
        Json observe = ObserveName("Posted", way);
        observe["center"] = way;
        observer.Do(observe);
    }
    poster.Do(PostName("Posted"));
    Settle(poster, observer);
    const std::vector<std::string> one = {"Posted object"};
    EXPECT_EQ(HeardByObserver(observer),
              (Heard{{"New", one}, {"defaultCenter", one}, {"notificationCenterForType", one}}));
}

TEST_F(Processes, PostersOwnObserverHearsItToo)
{
    Peer &process = StartPeer("process");
    process.Do(ObserveName("Posted"));
    process.Do(PostName("Posted"));
    EXPECT_EQ(process.Events(1).at(0).at("name"), "Posted");
}

TEST_P(Observation, HearsByNameByObjectOrByBothWithAnySuspensionBehavior)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    const Json object = typed::String("O");
    const auto observe = [&](const char *who, const Json &name, const Json &wanted, int64_t behavior) {
        Json command = {{"do", "observe"}, {"observer", who}, {"name", name}, {"object", wanted}};
        if (GetParam())
            command["behavior"] = behavior;
        observer.Do(command);
    };
    observe("name", "N", nullptr, 1);
    observe("object", nullptr, object, 3);
    observe("both", "N", object, 4);
    PostCombinations(poster);
    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer),
              (Heard{{"name", {"N O", "N P", "N -"}}, {"object", {"N O", "M O"}}, {"both", {"N O"}}}));
}

INSTANTIATE_TEST_SUITE_P(Overloads, Observation, ::testing::Bool(), [](const auto &info) {
    return std::string(info.param ? "WithABehavior" : "Inherited");
});

// GNUstep has no observers of everything between processes.
TEST_F(Processes, ObservingNeitherNameNorObjectIsRefused)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    const Json refusal = {{"class", "NSExceptionQZL"}, {"message", "notification name and object both nil"}};
    EXPECT_EQ(observer.RefusalOf({{"do", "observe"}, {"observer", "all"}}), refusal);
    EXPECT_EQ(observer.RefusalOf({{"do", "observe"},
                                  {"observer", "all"},
                                  {"name", nullptr},
                                  {"object", nullptr},
                                  {"behavior", 4}}),
              refusal);
    observer.Do(ObserveName("N"));
    PostCombinations(poster);
    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer), (Heard{{"observer", {"N O", "N P", "N -"}}}));
}

TEST_F(Processes, PostingWithoutANameIsRefused)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    observer.Do(ObserveName("N"));
    EXPECT_EQ(poster.RefusalOf({{"do", "post"}, {"name", nullptr}}).at("class"), "NSExceptionQZL");
    poster.Do(PostName("N"));
    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer), (Heard{{"observer", {"N object"}}}));
}

TEST_F(Processes, RemovalTakesAwayWhatItNames)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    for (const char *who : {"by name", "by both", "whole", "stays"})
        for (const char *name : {"N", "M"})
            observer.Do(ObserveName(name, who));
    observer.Do({{"do", "observe"}, {"observer", "by both"}, {"name", "N"}, {"object", typed::String("O")}});

    observer.Do({{"do", "remove"}, {"observer", "by name"}, {"name", "N"}});
    observer.Do({{"do", "remove"}, {"observer", "by both"}, {"name", "N"}, {"object", typed::String("O")}});
    observer.Do({{"do", "remove"}, {"observer", "whole"}});
    poster.Do(PostName("N", "O"));
    poster.Do(PostName("M", "O"));

    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer),
              (Heard{{"by name", {"M O"}}, {"by both", {"N O", "M O"}}, {"stays", {"N O", "M O"}}}));
}

TEST_F(Processes, RemovalLeavesOtherProcessesAlone)
{
    Peer &first = StartPeer("first");
    Peer &second = StartPeer("second");
    first.Do(ObserveName("N"));
    second.Do(ObserveName("N"));
    first.Do({{"do", "remove"}, {"observer", "observer"}, {"name", "N"}});
    first.Do(PostName("N"));
    Settle(first, second);
    EXPECT_TRUE(first.RemainingEvents().empty());
    EXPECT_EQ(HeardByObserver(second), (Heard{{"observer", {"N object"}}}));
}

TEST_F(Processes, FreedObserverHearsNothingAndTheOthersGoOn)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    for (const char *who : {"freed", "stays"})
        observer.Do(ObserveName("N", who));
    observer.Do({{"do", "free"}, {"observer", "freed"}});
    poster.Do(PostName("N"));
    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer), (Heard{{"stays", {"N object"}}}));
}

TEST_F(Processes, RegisteredTwiceAnObserverHearsTwice)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    observer.Do(ObserveName("N"));
    observer.Do(ObserveName("N"));
    poster.Do(PostName("N"));
    Settle(poster, observer);
    EXPECT_EQ(HeardByObserver(observer), (Heard{{"observer", {"N object", "N object"}}}));
}

// The messages that each member of a centre sends to its handle, with all their arguments.
#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

#include "tests/notifications/member_names.h"
#include "tests/support/recording_center.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CenterMessages : public PluginTest {
protected:
    /// Starts the host and makes a centre of the class, whose handle records, and arguments for its members.
    void StartWithCenter(const char *className)
    {
        Host &host = Start();
        recorded_.emplace();
        center = WrapperOf(host, className, recorded_->NewCenter());
        observer = host.New(kObserver);
        recorded_->Label(HandleOf<id>(host, observer), "the observer");
        notification = host.New(kNotification, {"ItsName"});
        recorded_->Label(HandleOf<id>(host, notification), "the notification");
        info = host.NewDictionary();
        host.DictionarySet(info, "key", "value");
    }

    std::vector<std::string> Sent(const char *method, const std::vector<Value> &arguments)
    {
        host().Call(center, method, arguments);
        return recorded_->Take();
    }

    std::vector<std::string> Recorded() { return recorded_->Take(); }

    /// "addObserver" with the other arguments, which must stay unconverted.
    void ExpectRefusalOfAMissingObserver(std::vector<Value> arguments)
    {
        arguments.insert(arguments.begin(), Value());
        for (const Value &missing : {Value(), host().NewWithoutConstructor(kObserver)}) {
            arguments.front() = missing;
            host().ClearTrace();
            ExpectException([&] { host().Call(center, "addObserver", arguments); }, "NilObjectException",
                            "Observer is nil.");
            EXPECT_EQ(host().CallsOf("REALGetStringEncoding"), 0);
        }
        EXPECT_THAT(Recorded(), IsEmpty());
    }

    void TearDown() override
    {
        for (Value *const value : {&center, &observer, &notification, &info})
            *value = Value();
        recorded_.reset();
        PluginTest::TearDown();
    }

    Value center;
    Value observer;
    Value notification;
    Value info;

private:
    std::optional<RecordedMessages> recorded_;
};

/// Messages of the members that the distributed centre inherits.
class MessagesOfBothCenters : public CenterMessages, public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override { StartWithCenter(GetParam()); }
};

/// Messages of the members that the disc-recording centre also has.
class MessagesOfAllCenters : public MessagesOfBothCenters {};

class MessagesBetweenProcesses : public CenterMessages {
protected:
    void SetUp() override { StartWithCenter(kDistributed); }
};

class MessagesToDiscRecording : public CenterMessages {
protected:
    void SetUp() override { StartWithCenter(kDiscs); }
};

} // namespace

TEST_P(MessagesOfBothCenters, PostWhatIsGivenAndNilForTheRest)
{
    EXPECT_THAT(Sent("postNotificationName", {"AName"}),
                ElementsAre("postNotificationName: 'AName' object: nil"));
    EXPECT_THAT(Sent("postNotificationName", {"AName", notification}),
                ElementsAre("postNotificationName: 'AName' object: the notification"));
    EXPECT_THAT(Sent("postNotificationName", {"AName", Value()}),
                ElementsAre("postNotificationName: 'AName' object: nil"));
    EXPECT_THAT(
        Sent("postNotificationName", {"AName", notification, info}),
        ElementsAre("postNotificationName: 'AName' object: the notification userInfo: {'key': 'value'}"));
    EXPECT_THAT(Sent("postNotificationName", {Value::EmptyString(), Value(), Value()}),
                ElementsAre("postNotificationName: nil object: nil userInfo: nil"));
    EXPECT_THAT(Sent("postNotification", {notification}), ElementsAre("postNotification: the notification"));
    EXPECT_THAT(Sent("postNotification", {Value()}), ElementsAre("postNotification: nil"));
}

TEST_P(MessagesOfBothCenters, RemoveAnObserverWholeAndNilForNone)
{
    EXPECT_THAT(Sent("removeObserver", {observer}), ElementsAre("removeObserver: the observer"));
    EXPECT_THAT(Sent("removeObserver", {Value()}), ElementsAre("removeObserver: nil"));
    EXPECT_THAT(Sent("removeObserver", {host().NewWithoutConstructor(kObserver)}),
                ElementsAre("removeObserver: nil"));
}

TEST_P(MessagesOfBothCenters, AreNoneForAMissingObserverThatIsAdded)
{
    ExpectRefusalOfAMissingObserver({"AName"});
}

INSTANTIATE_TEST_SUITE_P(Classes, MessagesOfBothCenters, ::testing::Values(kCenter, kDistributed),
                         [](const auto &parameter) { return std::string(parameter.param); });

TEST_P(MessagesOfAllCenters, RemoveAnObserverByNameAndObject)
{
    EXPECT_THAT(Sent("removeObserver", {observer, "AName"}),
                ElementsAre("removeObserver: the observer name: 'AName' object: nil"));
    EXPECT_THAT(Sent("removeObserver", {observer, "AName", notification}),
                ElementsAre("removeObserver: the observer name: 'AName' object: the notification"));
    EXPECT_THAT(Sent("removeObserver", {observer, Value::EmptyString(), notification}),
                ElementsAre("removeObserver: the observer name: nil object: the notification"));
    const Value bare = host().NewWithoutConstructor(kObserver);
    for (const Value &missing : {Value(), bare})
        EXPECT_THAT(Sent("removeObserver", {missing, "AName"}),
                    ElementsAre("removeObserver: nil name: 'AName' object: nil"));
}

TEST_P(MessagesOfAllCenters, AddAnObserverByNameAndObject)
{
    EXPECT_THAT(Sent("addObserver", {observer}),
                ElementsAre("addObserver: the observer selector: GotNotification: name: nil object: nil"));
    EXPECT_THAT(
        Sent("addObserver", {observer, "AName"}),
        ElementsAre("addObserver: the observer selector: GotNotification: name: 'AName' object: nil"));
    EXPECT_THAT(Sent("addObserver", {observer, "AName", notification}),
                ElementsAre("addObserver: the observer selector: GotNotification: name: 'AName' object: "
                            "the notification"));
    EXPECT_THAT(Sent("addObserver", {observer, Value::StringOfBytes("", qzlhost::encoding::UTF8), "object"}),
                ElementsAre("addObserver: the observer selector: GotNotification: name: '' object: "
                            "'object'"));
}

INSTANTIATE_TEST_SUITE_P(Classes, MessagesOfAllCenters, ::testing::Values(kCenter, kDistributed, kDiscs),
                         [](const auto &parameter) { return std::string(parameter.param); });

TEST_F(MessagesToDiscRecording, AddAMissingObserverAsNil)
{
    const Value bare = host().NewWithoutConstructor(kObserver);
    for (const Value &missing : {Value(), bare})
        EXPECT_THAT(Sent("addObserver", {missing, "AName"}),
                    ElementsAre("addObserver: nil selector: GotNotification: name: 'AName' object: nil"));
}

TEST_F(MessagesBetweenProcesses, PostWithTheOptionsWhole)
{
    for (const uint32_t options : {0u, 1u, 2u, 3u, 4u, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_THAT(Sent("postNotificationName", {"AName", "an object", info, options}),
                    ElementsAre("postNotificationName: 'AName' object: 'an object' userInfo: {'key': "
                                "'value'} options: " +
                                std::to_string(options)));
}

TEST_F(MessagesBetweenProcesses, PostWithTheFlagForImmediateDelivery)
{
    for (const bool immediately : {true, false})
        EXPECT_THAT(Sent("postNotificationName", {"AName", "an object", info, immediately}),
                    ElementsAre("postNotificationName: 'AName' object: 'an object' userInfo: {'key': "
                                "'value'} deliverImmediately: " +
                                std::to_string(immediately)));
}

TEST_F(MessagesBetweenProcesses, PostNilForAnEmptyStringAndForNoDictionary)
{
    const Value empty = Value::EmptyString();
    EXPECT_THAT(Sent("postNotificationName", {empty, empty, Value(), uint32_t{3}}),
                ElementsAre("postNotificationName: nil object: nil userInfo: nil options: 3"));
    EXPECT_THAT(Sent("postNotificationName", {empty, empty, Value(), true}),
                ElementsAre("postNotificationName: nil object: nil userInfo: nil deliverImmediately: 1"));
}

TEST_F(MessagesBetweenProcesses, AddAnObserverWithAnySuspensionBehaviorUnchanged)
{
    for (const int64_t behavior : {int64_t{0}, int64_t{1}, int64_t{2}, int64_t{3}, int64_t{4}, int64_t{5},
                                   int64_t{-1}, INT64_MAX, INT64_MIN})
        EXPECT_THAT(Sent("addObserver", {observer, "AName", "an object", behavior}),
                    ElementsAre("addObserver: the observer selector: GotNotification: name: 'AName' "
                                "object: 'an object' suspensionBehavior: " +
                                std::to_string(behavior)));
}

TEST_F(MessagesBetweenProcesses, AreNoneForAMissingObserverWithASuspensionBehavior)
{
    ExpectRefusalOfAMissingObserver({"AName", Value(), int64_t{4}});
}

TEST_F(MessagesBetweenProcesses, SetAndAskWhetherTheCentreIsSuspended)
{
    for (const bool suspended : {true, false}) {
        host().Set(center, "suspended", suspended);
        EXPECT_THAT(Recorded(), ElementsAre("setSuspended: " + std::to_string(suspended)));
        EXPECT_EQ(host().Get(center, "suspended").AsBoolean(), suspended);
        EXPECT_THAT(Recorded(), ElementsAre("suspended"));
    }
}

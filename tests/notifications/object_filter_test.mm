// Observers of one object: what they hear, and what is removed with an object.
#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

#include "tests/notifications/disc_recording.h"
#include "tests/notifications/member_names.h"
#include "tests/support/plugin_test.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct CenterRow {
    const char *className;
    /// Posts a notification of this object, or of none, through Cocoa.
    void (*post)(NSString *name, id object);
};

void PostInTheProcess(NSString *name, id object)
{
    [[NSNotificationCenter defaultCenter] postNotificationName:name object:object];
}

constexpr CenterRow kCenters[] = {{kCenter, PostInTheProcess}, {kDiscs, PostToDiscRecording}};

/// The objects are the handles of two host notifications: Cocoa compares them by identity.
class ObjectFilter : public PluginTest, public ::testing::WithParamInterface<CenterRow> {
protected:
    void SetUp() override
    {
        Host &host = Start();
        program_.emplace(host, "ProgramObserver", [this, &host](const Value &notification) {
            const int64_t object = host.Get(notification, "objectHandle").AsInteger();
            heard_.push_back(object == Address(wanted)  ? "wanted"
                             : object == Address(other) ? "other"
                             : object == 0              ? "none"
                                                        : "unknown");
        });
        observer = program_->NewObserver();
        center = host.New(GetParam().className);
        wanted = host.New(kNotification, {"The wanted object"});
        other = host.New(kNotification, {"Another object"});
    }

    void TearDown() override
    {
        for (Value *const value : {&center, &observer, &wanted, &other})
            *value = Value();
        program_.reset();
        PluginTest::TearDown();
    }

    /// Posts a notification with each object and one with none. Returns the objects of those that the
    /// observer hears.
    std::vector<std::string> HeardOf(NSString *name)
    {
        heard_.clear();
        GetParam().post(name, HandleOf<id>(host(), wanted));
        GetParam().post(name, HandleOf<id>(host(), other));
        GetParam().post(name, nil);
        return heard_;
    }

    Value center;
    Value observer;
    Value wanted;
    Value other;

private:
    int64_t Address(const Value &notification)
    {
        return reinterpret_cast<int64_t>(HandleOf<id>(host(), notification));
    }

    std::vector<std::string> heard_;
    std::optional<ObserverProgram> program_;
};

} // namespace

TEST_P(ObjectFilter, LetsOnlyTheNotificationsOfItsObjectThrough)
{
    host().Call(center, "addObserver", {observer, "Filtered", wanted});
    EXPECT_THAT(HeardOf(@"Filtered"), ElementsAre("wanted"));
    EXPECT_THAT(HeardOf(@"Unobserved"), IsEmpty());
}

TEST_P(ObjectFilter, LetsEveryNameOfItsObjectThroughWithoutAName)
{
    host().Call(center, "addObserver", {observer, Value::EmptyString(), wanted});
    EXPECT_THAT(HeardOf(@"One"), ElementsAre("wanted"));
    EXPECT_THAT(HeardOf(@"Another"), ElementsAre("wanted"));
    host().Call(center, "removeObserver", {observer, Value::EmptyString(), wanted});
    EXPECT_THAT(HeardOf(@"One"), IsEmpty());
}

TEST_P(ObjectFilter, IsNoneWhereNoObjectIsGiven)
{
    host().Call(center, "addObserver", {observer, "Unfiltered"});
    EXPECT_THAT(HeardOf(@"Unfiltered"), ElementsAre("wanted", "other", "none"));
    EXPECT_THAT(HeardOf(@"Unobserved"), IsEmpty());
    host().Call(center, "removeObserver", {observer, "Unfiltered"});
    EXPECT_THAT(HeardOf(@"Unfiltered"), IsEmpty());
}

TEST_P(ObjectFilter, OfARemovalRemovesOnlyWhatWasAddedForItsObject)
{
    host().Call(center, "addObserver", {observer, "Filtered", wanted});
    host().Call(center, "addObserver", {observer, "Filtered", other});
    EXPECT_THAT(HeardOf(@"Filtered"), ElementsAre("wanted", "other"));

    host().Call(center, "removeObserver", {observer, "Filtered", wanted});
    EXPECT_THAT(HeardOf(@"Filtered"), ElementsAre("other"));

    host().Call(center, "removeObserver", {observer, "Filtered", other});
    EXPECT_THAT(HeardOf(@"Filtered"), IsEmpty());
}

TEST_P(ObjectFilter, OfARemovalIsNoneWhereNoObjectIsGiven)
{
    host().Call(center, "addObserver", {observer, "Filtered", wanted});
    host().Call(center, "addObserver", {observer, "Filtered", other});
    host().Call(center, "addObserver", {observer, "Kept", wanted});

    host().Call(center, "removeObserver", {observer, "Filtered"});

    EXPECT_THAT(HeardOf(@"Filtered"), IsEmpty());
    EXPECT_THAT(HeardOf(@"Kept"), ElementsAre("wanted"));
    host().Call(center, "removeObserver", {observer, "Kept", wanted});
    EXPECT_THAT(HeardOf(@"Kept"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Classes, ObjectFilter, ::testing::ValuesIn(kCenters),
                         [](const auto &parameter) { return std::string(parameter.param.className); });

// Members of centres without a handle: they post, add, remove and change nothing.
#import <Foundation/Foundation.h>

#include <unistd.h>

#include "tests/notifications/disc_recording.h"
#include "tests/notifications/member_names.h"
#include "tests/support/family_fixture.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Has two observers: each test adds `known` to a centre, and `unknown` to none.
class MissingHandle : public PluginWithFamily {
protected:
    void SetUp() override
    {
        Host &host = StartWithFamily();
        family().OfferExceptions();
        known_.emplace(host, "KnownObserver");
        unknown_.emplace(host, "UnknownObserver");
        known = known_->NewObserver();
        unknown = unknown_->NewObserver();
    }

    void TearDown() override
    {
        EXPECT_EQ(family().ExceptionsWrapped(), 0);
        known = Value();
        unknown = Value();
        known_.reset();
        unknown_.reset();
        PluginTest::TearDown();
    }

    size_t HeardByTheKnown() const { return known_->received.size(); }
    size_t HeardByTheUnknown() const { return unknown_->received.size(); }

    /// A name that no other process uses.
    const std::string name = "QZLMissingHandle " + std::to_string(getpid());
    Value known;
    Value unknown;

private:
    std::optional<ObserverProgram> known_;
    std::optional<ObserverProgram> unknown_;
};

using CenterWithoutAHandle = MissingHandle;
using DistributedCenterWithoutAHandle = MissingHandle;
using DiscRecordingCenterWithoutAHandle = MissingHandle;

} // namespace

TEST_F(CenterWithoutAHandle, PostsNothing)
{
    const Value center = host().New(kCenter);
    host().Call(center, "addObserver", {known, name});
    const Value bare = host().NewWithoutConstructor(kCenter);

    host().Call(bare, "postNotificationName", {name});
    host().Call(bare, "postNotificationName", {name, "object"});
    host().Call(bare, "postNotificationName", {name, "object", host().NewDictionary()});
    host().Call(bare, "postNotification", {host().New(kNotification, {name})});
    EXPECT_EQ(HeardByTheKnown(), 0u);

    host().Call(center, "postNotificationName", {name});
    EXPECT_EQ(HeardByTheKnown(), 1u);
}

TEST_F(CenterWithoutAHandle, AddsAndRemovesNoObserver)
{
    const Value center = host().New(kCenter);
    host().Call(center, "addObserver", {known, name});
    const Value bare = host().NewWithoutConstructor(kCenter);

    host().Call(bare, "addObserver", {unknown, name});
    host().Call(bare, "removeObserver", {known});
    host().Call(bare, "removeObserver", {known, name});
    host().Call(center, "postNotificationName", {name});

    EXPECT_EQ(HeardByTheKnown(), 1u);
    EXPECT_EQ(HeardByTheUnknown(), 0u);
}

TEST_F(DistributedCenterWithoutAHandle, PostsAddsAndRemovesNothing)
{
    const Value center = host().New(kDistributed);
    host().Call(center, "addObserver", {known, name, Value(), int64_t{4}});
    const Value bare = host().NewWithoutConstructor(kDistributed);

    host().Call(bare, "addObserver", {unknown, name, Value(), int64_t{4}});
    host().Call(bare, "removeObserver", {known});
    host().Call(bare, "postNotificationName", {name, "bare", Value(), true});
    host().Call(bare, "postNotificationName", {name, "bare", Value(), uint32_t{1}});
    host().Call(center, "postNotificationName", {name, "object", Value(), true});

    // The posts of the bare centre would arrive first.
    EXPECT_TRUE(host().RunUntil([&] { return HeardByTheKnown() > 0; }, 30));
    EXPECT_EQ(HeardByTheKnown(), 1u);
    EXPECT_EQ(HeardByTheUnknown(), 0u);
}

TEST_F(DistributedCenterWithoutAHandle, IsNeverSuspended)
{
    const Value center = host().New(kDistributed);
    const Value bare = host().NewWithoutConstructor(kDistributed);

    host().Set(bare, "suspended", true);
    EXPECT_FALSE(host().Get(bare, "suspended").AsBoolean());
    EXPECT_FALSE(host().Get(center, "suspended").AsBoolean());

    host().Set(center, "suspended", true);
    host().Set(bare, "suspended", false);
    EXPECT_FALSE(host().Get(bare, "suspended").AsBoolean());
    EXPECT_TRUE(host().Get(center, "suspended").AsBoolean());
    host().Set(center, "suspended", false);
}

TEST_F(DiscRecordingCenterWithoutAHandle, AddsAndRemovesNoObserver)
{
    const Value center = host().New(kDiscs);
    host().Call(center, "addObserver", {known, "Discs"});
    const Value bare = host().NewWithoutConstructor(kDiscs);

    host().Call(bare, "addObserver", {unknown, "Discs"});
    host().Call(bare, "removeObserver", {known, "Discs"});
    PostToDiscRecording(@"Discs");

    EXPECT_EQ(HeardByTheKnown(), 1u);
    EXPECT_EQ(HeardByTheUnknown(), 0u);
    host().Call(center, "removeObserver", {known, "Discs"});
}

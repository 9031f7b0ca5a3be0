// The library's state before and after its start.
#include <limits>

#include "frame/class_records.h"
#include "frame/plugin.h"
#include "notifications/classes.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::HostOptions;

namespace {

struct RecordRow {
    const char *name;
    REALclassDefinition *record;
    uint64_t sizeBefore;
    uint64_t sizeAfter;
};

const RecordRow kRecords[] = {
    {"NSNotificationObserverQZL", &gNSNotificationObserverClass, 8, 16},
    {"NSNotificationQZL", &gNSNotificationClass, 8, 16},
    {"NSDistributedNotificationCenterQZL", &gNSDistributedNotificationCenterClass, 0, 0},
    {"NSNotificationCenterQZL", &gNSNotificationCenterClass, 8, 16},
    {"DRNotificationCenterQZL", &gDRNotificationCenterClass, 8, 16},
};

class BeforeTheStart : public ::testing::Test {};

class AfterTheStart : public HostTest {
protected:
    Host &StartWith(std::optional<double> version, const std::function<void(Host &)> &prepare = [](Host &) {})
    {
        HostOptions options;
        options.version = version;
        Host &host = MakeHost(options);
        prepare(host);
        REALPluginMain(host.Resolver());
        return host;
    }
};

} // namespace

TEST_F(BeforeTheStart, HostIsUnknownAndTheRecordVersionIsTheLatest)
{
    EXPECT_EQ(gResolver, nullptr);
    EXPECT_EQ(rbversion_rbversion, 0.0);
    EXPECT_EQ(CurrentREALControlVersion, 13);
}

TEST_F(BeforeTheStart, RecordsHoldTheLatestVersionAndTheSizesOfTheirData)
{
    for (const RecordRow &row : kRecords) {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(row.record->name, row.name);
        EXPECT_EQ(row.record->version, 13u);
        EXPECT_EQ(row.record->versionHigh, 0u);
        EXPECT_EQ(row.record->dataSize, row.sizeBefore);
    }
}

TEST_F(AfterTheStart, ResolverAndVersionsAreThoseOfTheHost)
{
    const Host &host = StartWith(2012.5);
    EXPECT_EQ(gResolver, host.Resolver());
    EXPECT_EQ(rbversion_rbversion, 2012.5);
    EXPECT_EQ(CurrentREALControlVersion, 10);
}

TEST_F(AfterTheStart, UnknownHostVersionIsZero)
{
    StartWith(2012.5, [](Host &unloaded) { unloaded.Lack("REALGetRBVersion"); });
    EXPECT_EQ(rbversion_rbversion, 0.0);
    EXPECT_EQ(CurrentREALControlVersion, 9);
}

TEST_F(AfterTheStart, HostVersionThatIsNoNumberGivesTheOldestRecordVersion)
{
    const Host &host = StartWith(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(CurrentREALControlVersion, 9);
    EXPECT_EQ(host.DeclaredVersion(), 9);
}

TEST_F(AfterTheStart, RecordsAreWrittenInPlace)
{
    StartWith(2013.03);
    for (const RecordRow &row : kRecords) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.record->version, 12u);
        EXPECT_EQ(row.record->versionHigh, 0u);
        EXPECT_EQ(row.record->dataSize, row.sizeAfter);
    }
}

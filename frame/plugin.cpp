// The entry point: asks the host for its version and registers the classes.
#include "frame/plugin.h"

#include "frame/class_records.h"
#include "frame/host_entry_points.h"
#include "frame/loaded_host.h"
#include "notifications/classes.h"

namespace {

/// The oldest host version for each record version, newest first.
constexpr struct {
    double hostVersion;
    int64_t recordVersion;
} kRecordVersions[] = {
    {2013.04, 13},
    {2013.03, 12},
    {2013.0, 11},
    {2012.0, 10},
};
constexpr int64_t kOldestRecordVersion = 9;

int64_t RecordVersionForHost(double hostVersion)
{
    for (const auto &row : kRecordVersions)
        if (hostVersion >= row.hostVersion)
            return row.recordVersion;
    return kOldestRecordVersion;
}

/// The classes in the order of their registration. The host accepts a subclass before its superclass.
REALclassDefinition *const kClasses[] = {
    &gNSNotificationObserverClass, &gNSNotificationClass,       &gNSDistributedNotificationCenterClass,
    &gNSNotificationCenterClass,   &gDRNotificationCenterClass,
};

constexpr uint64_t RoundedUpTo16(uint64_t size)
{
    return (size + 15) & ~uint64_t{15};
}

} // namespace

void REALPluginMain(void *(*resolver)(const char *name))
{
    gResolver = resolver;

    if (const auto getRBVersion = reinterpret_cast<double (*)()>(resolver("REALGetRBVersion")))
        rbversion_rbversion = getRBVersion();
    CurrentREALControlVersion = RecordVersionForHost(rbversion_rbversion);

    // A host that lacks this function is not supported, so nothing checks for it.
    const auto registerPluginVersion = reinterpret_cast<void (*)(int32_t)>(resolver("RegisterPluginVersion"));
    registerPluginVersion(static_cast<int32_t>(CurrentREALControlVersion));

    for (REALclassDefinition *record : kClasses) {
        record->dataSize = RoundedUpTo16(record->dataSize);
        record->version = static_cast<uint32_t>(CurrentREALControlVersion);
        REALRegisterClass(record);
    }
}

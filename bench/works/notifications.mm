// A notification that a program reads whole: its name, its object and its user info.
#include "bench/floors.h"
#include "bench/host_functions.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "frame/class_records.h"
#include "notifications/classes.h"

using qzlhost::Value;

namespace {

constexpr double kTarget = 1.10;
constexpr size_t kUserInfo = 1;
constexpr size_t kName = 2;
constexpr size_t kObjectVariant = 5;

/// The result of the library's getter of a property.
template <typename Result>
Result Get(size_t property, REALobject notification)
{
    const REALpropertyRecord &record = gNSNotificationClass.properties.first[property];
    return reinterpret_cast<Result (*)(REALobject, int64_t)>(record.getter.function)(notification,
                                                                                     record.parameter);
}

NotificationParts Read(REALobject notification)
{
    return {Get<REALstring>(kName, notification), Get<REALobject>(kObjectVariant, notification),
            Get<REALobject>(kUserInfo, notification)};
}

NotificationParts FloorRead(REALobject instance)
{
    NSNotification *const notification = FloorHandle(instance);
    return {FloorStringToHost([notification name]), FloorAnyToHost([notification object]),
            FloorAnyToHost([notification userInfo])};
}

Sides Reading()
{
    qzlhost::Host &host = qzlhost::Host::Current();
    const Value userInfo = host.NewDictionary();
    host.DictionarySet(userInfo, "language", "en");
    host.DictionarySet(userInfo, "serial", int64_t{123'456'789'012});
    host.DictionarySet(userInfo, "level", 0.07);
    host.DictionarySet(userInfo, "charging", true);
    const Value notification = host.New("NSNotificationQZL", {"BatteryLow", "main battery", userInfo});
    return MakeSides([notification] { return Read(ObjectOf(notification)); },
                     [notification] { return FloorRead(ObjectOf(notification)); });
}

} // namespace

void AddNotificationWorks(std::vector<Work> &works)
{
    works.push_back({"notifications/read_whole", Reading, kTarget});
}

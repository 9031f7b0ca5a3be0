// A post until every handler has run: without observers and with up to a hundred, whose programs handle the
// event or do not.
#include <pthread.h>

#include "bench/floor_classes.h"
#include "bench/floors.h"
#include "bench/inputs.h"
#include "bench/work.h"
#include "frame/class_records.h"
#include "notifications/classes.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr double kTarget = 1.10;
constexpr char kName[] = "BenchNotification";
constexpr const char *kObservers[] = {"NSNotificationObserverQZL", "FloorNotificationObserver"};

/// Handlers that have run.
int64_t gEvents = 0;

std::string HandlingClass(const std::string &observerClass)
{
    return "Handling" + observerClass;
}

/// Programs' classes that handle the event, derived from the library's observer and from the floor's.
void DefineHandlingClasses()
{
    Host &host = Host::Current();
    for (const std::string observerClass : kObservers) {
        if (host.HasClass(HandlingClass(observerClass)))
            continue;
        qzlhost::ClassDefinition definition;
        definition.name = HandlingClass(observerClass);
        definition.super = observerClass;
        definition.events.push_back({"GotNotification(notification as NSNotificationQZL)",
                                     [](const Value &, const std::vector<Value> &) {
                                         ++gEvents;
                                         return Value();
                                     }});
        host.DefineClass(std::move(definition));
    }
}

/// Centres of their own for the library's observers and for the floor's, with so many observers of kName in
/// each.
struct Posts {
    Posts(int observerCount, bool handled)
    {
        const qzlhost::AutoreleasePool pool;
        Host &host = Host::Current();
        DefineHandlingClasses();
        const auto classOf = [&](const char *observer) {
            return handled ? HandlingClass(observer) : observer;
        };
        NSNotificationCenter *const oursCenter = [[NSNotificationCenter alloc] init];
        host.Set(center, "Handle", reinterpret_cast<int64_t>(oursCenter));
        for (int i = 0; i < observerCount; ++i) {
            observers.push_back(host.New(classOf("NSNotificationObserverQZL")));
            host.Call(center, "addObserver", {observers.back(), kName});
            observers.push_back(host.NewWithoutConstructor(classOf("FloorNotificationObserver")));
            [floorCenter addObserver:NewFloorObserver(ObjectOf(observers.back()))
                            selector:@selector(GotNotification:)
                                name:CocoaString(kName)
                              object:nil];
        }
    }

    Value center = Host::Current().NewWithoutConstructor("NSNotificationCenterQZL");
    NSNotificationCenter *floorCenter = [[NSNotificationCenter alloc] init];
    std::vector<Value> observers;
    Value name = Value(kName);
};

/// The library's function behind `postNotificationName(name as string)`.
auto PostFunction()
{
    return reinterpret_cast<void (*)(REALobject center, REALstring name)>(
        gNSNotificationCenterClass.methods.first[0].function);
}

int64_t Post(REALobject center, REALstring name)
{
    const int64_t before = gEvents;
    PostFunction()(center, name);
    return gEvents - before;
}

int64_t FloorPost(NSNotificationCenter *center, REALstring name)
{
    const int64_t before = gEvents;
    [center postNotificationName:FloorStringToCocoa(name) object:nil];
    return gEvents - before;
}

Sides Delivery(int observerCount, bool handled)
{
    // Observers live as long as the process.
    const auto *const posts = new Posts(observerCount, handled);
    return MakeSides([posts] { return Post(ObjectOf(posts->center), StringOf(posts->name)); },
                     [posts] { return FloorPost(posts->floorCenter, StringOf(posts->name)); });
}

} // namespace

void AddDeliveryWorks(std::vector<Work> &works)
{
    RegisterFloorClasses();
    works.push_back({"delivery/no_observer", [] { return Delivery(0, false); }, kTarget});
    for (const int count : {1, 10, 100}) {
        const std::string observers = std::to_string(count) + (count == 1 ? "_observer" : "_observers");
        works.push_back({"delivery/" + observers, [count] { return Delivery(count, true); }, kTarget});
        works.push_back(
            {"delivery/" + observers + "_unhandled", [count] { return Delivery(count, false); }, kTarget});
    }
}

// Calls the program's handler of the event "GotNotification".
#include "notifications/observer_event.h"

#include "frame/host_references.h"
#include "frame/loaded_host.h"
#include "notifications/NSNotificationQZL.h"

alignas(kRecordAlignment) REALeventRecord gObserverEvents[] = {
    {.declaration = "GotNotification(notification as NSNotificationQZL)"},
};

namespace {

/// The key under which the host knows the event. Under the oldest record version, the host stores there the
/// address of a record of its own, whose second word is the key.
void *GotNotificationKey()
{
    constexpr int64_t kVersionWithHostRecord = 9;
    const uint64_t key = gObserverEvents[0].key;
    if (CurrentREALControlVersion != kVersionWithHostRecord)
        return reinterpret_cast<void *>(key);
    return reinterpret_cast<void *const *>(key)[1];
}

} // namespace

void RaiseGotNotification(REALobject observer, NSNotification *notification)
{
    using Handler = void (*)(REALobject observer, REALobject notification);
    const auto handler = reinterpret_cast<Handler>(REALGetEventInstance(observer, GotNotificationKey()));
    if (handler == nullptr)
        return;
    HostRef<REALobject> wrapper(NewNSNotificationQZL(notification));
    handler(observer, wrapper.Get());
    wrapper.GiveBack();
}

// Delivers notifications to observers without a centre.
#include "tests/notifications/delivery.h"

void DeliverTo(id observer)
{
    [observer GotNotification:[NSNotification notificationWithName:@"Delivered" object:nil]];
}

void Deliver(qzlhost::Host &host, const qzlhost::Value &observer)
{
    DeliverTo(*static_cast<id *>(host.InstanceData(observer)));
}

// The notification centres that the commands watch and post to, as wrappers of the library.
#include "qzlhost/centers.h"

#import <AppKit/AppKit.h>

using qzlhost::Host;
using qzlhost::Value;

Value NewCenter(Host &host, CenterKind kind)
{
    switch (kind) {
    case CenterKind::Distributed:
        return host.New("NSDistributedNotificationCenterQZL");
    case CenterKind::Local:
        return host.New("NSNotificationCenterQZL");
    case CenterKind::Workspace:
        break;
    }
    // No constructor of the library returns it. The property Handle takes over a centre with its retain.
    NSNotificationCenter *const workspace = [[NSWorkspace sharedWorkspace] notificationCenter];
    Value center = host.NewWithoutConstructor("NSNotificationCenterQZL");
    host.Set(center, "Handle", reinterpret_cast<int64_t>([workspace retain]));
    return center;
}

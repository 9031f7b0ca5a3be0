// Posts notifications to a DRNotificationCenter, for tests: there are no burners that would.
#ifndef COCOAPORT_DRNOTIFICATIONCENTERPOSTING_H
#define COCOAPORT_DRNOTIFICATIONCENTERPOSTING_H

#include <DiscRecording/DiscRecording.h>

/// Delivers the notification to the centre's observers at once, on the calling thread.
extern "C" void DRNotificationCenterPost(DRNotificationCenter *center, NSNotification *notification);

#endif

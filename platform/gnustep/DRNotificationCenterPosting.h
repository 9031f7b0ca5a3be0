/// How notifications reach a DRNotificationCenter where there are no burners: for tests.
#ifndef COCOAPORT_DRNOTIFICATIONCENTERPOSTING_H
#define COCOAPORT_DRNOTIFICATIONCENTERPOSTING_H

#include <DiscRecording/DiscRecording.h>

/// Delivers the notification to the centre's observers at once, on the calling thread. The centre
/// is the object of no notification unless the caller makes it so.
extern "C" void DRNotificationCenterPost(DRNotificationCenter *center, NSNotification *notification);

#endif

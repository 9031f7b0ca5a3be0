// The host class whose instances receive notifications as an event.
#pragma once

#include "frame/host_types.h"

@class NSNotification;

/// Raises "GotNotification" on the observer, if its program implements the event. Main thread only. Cocoa
/// exceptions and those of the program pass.
void RaiseGotNotification(REALobject observer, NSNotification *notification);

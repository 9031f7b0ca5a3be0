// The event that observers raise in the host.
#pragma once

#include "frame/class_records.h"

@class NSNotification;

/// The one event of the observers' class. The host fills its key in.
extern REALeventRecord gObserverEvents[1];

/// Raises "GotNotification" on the observer, if its program implements the event. Main thread only. Cocoa
/// exceptions and those of the program pass.
void RaiseGotNotification(REALobject observer, NSNotification *notification);

// The event that observers raise in the host.
#pragma once

#include "frame/class_records.h"

@class NSNotification;

/// The observer class's only event. The host sets its key.
extern REALeventRecord gObserverEvents[1];

/// Raises "GotNotification" on the observer, if the program implements the event. Main thread only.
/// Exceptions of Cocoa and of the program pass.
void RaiseGotNotification(REALobject observer, NSNotification *notification);

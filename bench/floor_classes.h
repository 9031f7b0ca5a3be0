// Host classes written by hand that do what the library's observers and notifications do in a delivery.
#pragma once

#include "frame/host_types.h"

@class NSNotification, NSObject;

/// Registers "FloorNotificationObserver" with its event and "FloorNotification".
void RegisterFloorClasses();

/// A new Cocoa observer, with a retain for the caller, that raises the event on this instance of a class
/// derived from "FloorNotificationObserver" for each notification that comes by `GotNotification:`.
NSObject *NewFloorObserver(REALobject target);

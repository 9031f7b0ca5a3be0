// The host class of Cocoa notifications.
#pragma once

#include "frame/host_types.h"

@class NSNotification;

/// The notification's registered wrapper, or a new one, with one reference for the caller. Null for nil and
/// if the host makes no instance. Called on the host's thread. Cocoa exceptions pass.
REALobject NewNSNotificationQZL(NSNotification *notification);

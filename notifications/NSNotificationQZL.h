// The host class that stands for one Cocoa notification.
#pragma once

#include "frame/host_types.h"

@class NSNotification;

/// The wrapper that the registry knows for the notification, or a new one; with one reference for the caller.
/// Null for nil, and where the host makes none. Called on the host's thread. Cocoa exceptions pass.
REALobject NewNSNotificationQZL(NSNotification *notification);

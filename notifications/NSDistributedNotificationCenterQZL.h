// The host class of notification centres between processes.
#pragma once

#include "frame/host_types.h"

@class NSDistributedNotificationCenter;

/// The centre's registered wrapper, or a new one, with one reference for the caller. Null for nil and if the
/// host makes no instance. Called on the host's thread. Cocoa exceptions pass.
REALobject NewNSDistributedNotificationCenterQZL(NSDistributedNotificationCenter *center);

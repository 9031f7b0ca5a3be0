// The host class that stands for a notification centre between processes.
#pragma once

#include "frame/host_types.h"

@class NSDistributedNotificationCenter;

/// The wrapper that the registry knows for the centre, or a new one; with one reference for the caller. Null
/// for nil, and where the host makes none. Called on the host's thread. Cocoa exceptions pass.
REALobject NewNSDistributedNotificationCenterQZL(NSDistributedNotificationCenter *center);

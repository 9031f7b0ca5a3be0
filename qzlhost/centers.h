// The notification centres that the commands watch and post to, as wrappers of the library.
#pragma once

#include "host/host.h"

enum class CenterKind { Distributed, Local, Workspace };

/// A new wrapper of the process's centre, of the centre between processes, or of the workspace's.
qzlhost::Value NewCenter(qzlhost::Host &host, CenterKind kind);

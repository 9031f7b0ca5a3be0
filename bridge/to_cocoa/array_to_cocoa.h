// Host arrays become Cocoa arrays.
#pragma once

#include <objc/objc.h>

#include "frame/host_types.h"

/// Each gives an autoreleased mutable Cocoa array of a host array with elements of one type; empty for an
/// empty one. An element that the array lost meanwhile raises the host's out-of-bounds exception and counts
/// as 0 or nil. A date or object that converts to nil is what Cocoa makes of adding nil: its exception
/// passes.
id ConvertIntegerArray(REALobject array);
id ConvertInt64Array(REALobject array);
id ConvertSingleArray(REALobject array);
id ConvertDoubleArray(REALobject array);
id ConvertBooleanArray(REALobject array);
id ConvertDateArray(REALobject array);
id ConvertStringArray(REALobject array);
id ConvertObjectArray(REALobject array);
id ConvertTextArray(REALobject array);

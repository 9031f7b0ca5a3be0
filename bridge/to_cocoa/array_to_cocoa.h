// Host arrays become Cocoa arrays.
#pragma once

#include <objc/objc.h>

#include "bridge/enclosing_containers.h"
#include "frame/host_types.h"

/// Each gives an autoreleased mutable Cocoa array of a host array with elements of one type; empty for an
/// empty one. An element that the array lost meanwhile raises the host's out-of-bounds exception and counts
/// as 0 or nil. A date or object that converts to nil is what Cocoa makes of adding nil: its exception
/// passes. An array of objects that encloses itself gives nil.
id ConvertIntegerArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertInt64Array(REALobject array, const EnclosingContainers *enclosing);
id ConvertSingleArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertDoubleArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertBooleanArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertDateArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertStringArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertObjectArray(REALobject array, const EnclosingContainers *enclosing);
id ConvertTextArray(REALobject array, const EnclosingContainers *enclosing);

// Tells classes whose objects answer for themselves of which classes they are from those that leave it to the root
// class.
#pragma once

#include <objc/objc.h>

/// Whether objects of the class answer `isKindOfClass:` and `class` by NSObject's own methods, now. Sends them no
/// message. Any thread.
bool LeavesItsKindToTheRootClass(Class type);

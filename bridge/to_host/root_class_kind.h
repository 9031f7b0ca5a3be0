// Which objects leave it to the root class to say of which classes they are.
#pragma once

#include <objc/objc.h>

/// Whether `isKindOfClass:` sent to the object is answered by NSObject's own method, which goes by the
/// object's class chain: neither that method nor the one that it asks for the object's class is another.
/// Sends the object nothing; the object has been sent a message before. Any thread.
bool LeavesItsKindToTheRootClass(id object);

/// What the library asks of Apple's Objective-C runtime.
#ifndef QZL_OBJC_RUNTIME_H
#define QZL_OBJC_RUNTIME_H

#include <objc/objc.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The class of that name, or Nil.
Class objc_getClass(const char *name);

/// The superclass; Nil for a root class.
Class class_getSuperclass(Class subclass);

/// The name of the object's class, borrowed.
const char *object_getClassName(id object);

#ifdef __cplusplus
}
#endif

#endif

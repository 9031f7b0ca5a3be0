/// What the library asks of Apple's Objective-C runtime.
#ifndef QZL_OBJC_RUNTIME_H
#define QZL_OBJC_RUNTIME_H

#include <objc/objc.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The class of that name, or Nil.
Class objc_getClass(const char *name);

/// The class's name, borrowed.
const char *class_getName(Class named);

/// The superclass; Nil for a root class.
Class class_getSuperclass(Class subclass);

/// The class that the object has, whatever it answers.
Class object_getClass(id object);

/// The name of the object's class, borrowed.
const char *object_getClassName(id object);

#ifdef __cplusplus
}
#endif

#endif

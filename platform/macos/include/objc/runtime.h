// The part of Apple's Objective-C runtime that the library uses.
#ifndef QZL_OBJC_RUNTIME_H
#define QZL_OBJC_RUNTIME_H

#include <objc/objc.h>

extern "C" {

/// The class of that name; Nil if there is none.
Class objc_getClass(const char *name);

/// The class's name, borrowed.
const char *class_getName(Class named);

/// The superclass; Nil for a root class.
Class class_getSuperclass(Class subclass);

/// The object's class, whatever the object itself reports.
Class object_getClass(id object);

/// The name of the object's class, borrowed.
const char *object_getClassName(id object);
}

#endif

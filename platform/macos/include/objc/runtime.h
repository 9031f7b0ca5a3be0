// The part of Apple's Objective-C runtime that the library and the programs use.
#ifndef QZL_OBJC_RUNTIME_H
#define QZL_OBJC_RUNTIME_H

#include <stddef.h>

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

/// The selector of that name.
SEL sel_registerName(const char *name);

/// A new class, which is nobody's until it is registered; Nil if the name is taken.
Class objc_allocateClassPair(Class superclass, const char *name, size_t extraBytes);
void objc_registerClassPair(Class added);

/// Frees a class made at run time, of which there are no instances.
void objc_disposeClassPair(Class added);

/// Adds a method of these types; NO if the class itself has one of the name.
BOOL class_addMethod(Class extended, SEL name, IMP implementation, const char *types);
}

#endif

// Classes made at run time, and objects without initialisation.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <stdexcept>
#include <string>
#include <vector>

/// A method for a class made at run time.
struct RuntimeMethod {
    const char *selector;
    IMP implementation;
    const char *types;
};

/// A new class. No class may have the name yet.
inline Class MakeClass(const std::string &name, Class super, const std::vector<RuntimeMethod> &methods = {})
{
    const Class made = objc_allocateClassPair(super, name.c_str(), 0);
    if (made == Nil)
        throw std::logic_error("there already is a class " + name);
    for (const RuntimeMethod &method : methods)
        class_addMethod(made, sel_registerName(method.selector), method.implementation, method.types);
    objc_registerClassPair(made);
    return made;
}

/// Whether the class is the other one or derives from it. No class receives a message.
inline bool DescendsFrom(Class cocoaClass, Class ancestor)
{
    while (cocoaClass != Nil && cocoaClass != ancestor)
        cocoaClass = class_getSuperclass(cocoaClass);
    return cocoaClass != Nil;
}

/// The same for a class that may be missing.
inline bool DescendsFrom(Class cocoaClass, const std::string &ancestor)
{
    while (cocoaClass != Nil && class_getName(cocoaClass) != ancestor)
        cocoaClass = class_getSuperclass(cocoaClass);
    return cocoaClass != Nil;
}

/// Gives an object a new class, derived from its own, that has these methods, too.
inline void AddMethods(id object, const std::string &className, const std::vector<RuntimeMethod> &methods)
{
    object_setClass(object, MakeClass(className, object_getClass(object), methods));
}

/// A new autoreleased object without initialisation, for classes whose -dealloc needs none.
inline id MakeObject(Class cocoaClass)
{
    return [NSAllocateObject(cocoaClass, 0, nullptr) autorelease];
}

/// An object of any class, in the state after +alloc. Only the code under test sends it messages. Its memory
/// is freed without -dealloc, which few classes survive without initialisation.
class UninitializedObject {
public:
    explicit UninitializedObject(Class cocoaClass) : object_(NSAllocateObject(cocoaClass, 0, nullptr)) {}
    ~UninitializedObject() { NSDeallocateObject(object_); }
    UninitializedObject(const UninitializedObject &) = delete;
    UninitializedObject &operator=(const UninitializedObject &) = delete;

    id Get() const { return object_; }
    /// Retains since it was made.
    NSUInteger Retains() const { return NSExtraRefCount(object_); }

private:
    id object_;
};

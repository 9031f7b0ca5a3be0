// Host classes and Cocoa objects that stand in for real ones where Cocoa objects become host values.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "bridge/instance_data.h"
#include "bridge/to_host/core_foundation_wrappers.h"
#include "bridge/to_host/object_to_variant.h"
#include "bridge/to_host/wrappers.h"
#include "family/wrapper_classes.h"
#include "frame/instance_registry.h"
#include "tests/support/linked_test.h"

/// A host class that holds a Core Foundation object. Its constructor sets the signature or not.
inline void DefineCFWrapperClass(qzlhost::Host &host, const std::string &name,
                                 int64_t signature = kCFWrapperSignature)
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.dataSize = sizeof(CFWrapperData);
    definition.constructor = [signature](qzlhost::Instance *instance) {
        auto *const data = InstanceData<CFWrapperData>(reinterpret_cast<REALobject>(instance));
        data->signature = signature;
        data->unused = data;
    };
    definition.destructor = [](qzlhost::Instance *instance) {
        auto *const data = InstanceData<CFWrapperData>(reinterpret_cast<REALobject>(instance));
        if (data->handle != nullptr)
            CFRelease(data->handle);
    };
    host.DefineClass(std::move(definition));
}

/// The registry of wrappers, while this lives.
struct Registry {
    Registry()
    {
        instances = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
        family::registry = instances;
    }
    ~Registry()
    {
        CFRelease(instances);
        instances = family::registry = nullptr;
    }
    Registry(const Registry &) = delete;
    Registry &operator=(const Registry &) = delete;

    /// The host instance that is entered for the object, borrowed; null where none is.
    REALobject At(id object) const
    {
        return static_cast<REALobject>(const_cast<void *>(CFDictionaryGetValue(instances, object)));
    }
    void Enter(id object, const qzlhost::Value &instance)
    {
        CFDictionarySetValue(instances, object, instance.ObjectPointer());
    }
};

/// The host value that the library makes of the object, with the reference that comes with it.
inline qzlhost::Value Convert(id object)
{
    return Owned(NewVariantFromNSObject(object));
}

/// The name of the Cocoa exception that the body raises; nil where it raises none.
template <typename Body>
NSString *ExceptionRaisedBy(Body body)
{
    @try {
        body();
    } @catch (NSException *exception) {
        return [exception name];
    }
    return nil;
}

/// A method that a class made at run time gets.
struct RuntimeMethod {
    const char *selector;
    IMP implementation;
    const char *types;
};

/// A class made at run time, under a name that no class has yet.
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

/// Gives an object a class of its own, with these methods more.
inline void AddMethods(id object, const std::string &className, const std::vector<RuntimeMethod> &methods)
{
    object_setClass(object, MakeClass(className, object_getClass(object), methods));
}

/// A new autoreleased object without initialisation: for classes that need none to be deallocated.
inline id MakeObject(Class cocoaClass)
{
    return [NSAllocateObject(cocoaClass, 0, nullptr) autorelease];
}

/// An object of any class, in the state in which `alloc` leaves it. Nothing but the code under test sends it
/// messages; its memory is freed without -dealloc, which few classes survive without initialisation.
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

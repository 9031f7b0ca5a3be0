// Cocoa objects and methods that raise, whatever they are asked.
#include "tests/support/raising.h"

#include <cstdlib>

NSString *const kRaised = @"QZLRaised";

namespace {

id RaiseAt(SEL selector)
{
    NSString *const asked = NSStringFromSelector(selector);
    [[NSException exceptionWithName:kRaised
                             reason:[@"asked for " stringByAppendingString:asked]
                           userInfo:[NSDictionary dictionaryWithObject:asked forKey:@"selector"]] raise];
    return nil;
}

id Raise(id, SEL selector)
{
    return RaiseAt(selector);
}

/// The runtime asks for a method's signature on behalf of a message that nothing answers.
id RaiseForUnknown(id, SEL, SEL asked)
{
    return RaiseAt(asked);
}

using ClassMethod = id(id, SEL, id, id, id);

Class gRaisingClass;
ClassMethod *gOriginal;

/// The runtime cannot give a class its own version of a class method that it inherits, so this stands in the
/// place of the inherited one.
id RaiseForOneClass(id self, SEL selector, id first, id second, id third)
{
    return self == (id)gRaisingClass ? RaiseAt(selector) : gOriginal(self, selector, first, second, third);
}

/// A class whose objects answer no message at all.
Class RaisingClass()
{
    static const Class made = [] {
        const Class allocated = objc_allocateClassPair([NSProxy class], "QZLRaisingObject", 0);
        class_addMethod(allocated, @selector(methodSignatureForSelector:),
                        reinterpret_cast<IMP>(RaiseForUnknown), "@24@0:8:16");
        unsigned count = 0;
        Method *const methods = class_copyMethodList([NSProxy class], &count);
        for (unsigned i = 0; i < count; ++i)
            class_addMethod(allocated, method_getName(methods[i]), reinterpret_cast<IMP>(Raise),
                            method_getTypeEncoding(methods[i]));
        std::free(methods);
        objc_registerClassPair(allocated);
        return allocated;
    }();
    return made;
}

} // namespace

RaisingObject::RaisingObject() : object_(NSAllocateObject(RaisingClass(), 0, nullptr)) {}

RaisingObject::~RaisingObject()
{
    NSDeallocateObject(object_);
}

RaisingMethod::RaisingMethod(Class cocoaClass, SEL selector)
    : method_(class_getClassMethod(cocoaClass, selector))
{
    gRaisingClass = cocoaClass;
    gOriginal = reinterpret_cast<ClassMethod *>(method_getImplementation(method_));
    method_setImplementation(method_, reinterpret_cast<IMP>(RaiseForOneClass));
}

RaisingMethod::~RaisingMethod()
{
    method_setImplementation(method_, reinterpret_cast<IMP>(gOriginal));
}

RaisingMeanwhile::RaisingMeanwhile(id object)
    : object_(object), original_(object_setClass(object, RaisingClass()))
{
}

RaisingMeanwhile::~RaisingMeanwhile()
{
    object_setClass(object_, original_);
}

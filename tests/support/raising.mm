// Cocoa objects and methods that raise.
#include "tests/support/raising.h"

#include <cstdlib>

#include "tests/support/runtime_classes.h"

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

/// For a message without a method the runtime asks for a signature first.
id RaiseForUnknown(id, SEL, SEL asked)
{
    return RaiseAt(asked);
}

using ClassMethod = id(id, SEL, id, id, id);

Class gRaisingClass;
ClassMethod *gOriginal;

/// Replaces the inherited method for all classes: the runtime cannot override an inherited class method for
/// one class alone.
id RaiseForOneClass(id self, SEL selector, id first, id second, id third)
{
    return self == (id)gRaisingClass ? RaiseAt(selector) : gOriginal(self, selector, first, second, third);
}

/// A class whose objects raise at every message.
Class RaisingClass()
{
    static const Class made = [] {
        std::vector<RuntimeMethod> raising = {
            {"methodSignatureForSelector:", reinterpret_cast<IMP>(RaiseForUnknown), "@24@0:8:16"}};
        unsigned count = 0;
        Method *const methods = class_copyMethodList([NSProxy class], &count);
        for (unsigned i = 0; i < count; ++i)
            raising.push_back({sel_getName(method_getName(methods[i])), reinterpret_cast<IMP>(Raise),
                               method_getTypeEncoding(methods[i])});
        std::free(methods);
        return MakeClass("QZLRaisingObject", [NSProxy class], raising);
    }();
    return made;
}

} // namespace

void *RaiseInHost()
{
    [NSException raise:kRaised format:@"from the host"];
    return nullptr;
}

RaisingObject::RaisingObject() : object_(NSAllocateObject(RaisingClass(), 0, nullptr)) {}

RaisingObject::~RaisingObject()
{
    NSDeallocateObject(object_);
}

RaisingMethod::RaisingMethod(Class cocoaClass, SEL selector)
    : // The message initialises the class, which may call the method.
      replaced_(class_getClassMethod([cocoaClass class], selector), &RaiseForOneClass)
{
    gRaisingClass = cocoaClass;
    gOriginal = replaced_.Original();
}

RaisingMeanwhile::RaisingMeanwhile(id object)
    : object_(object), original_(object_setClass(object, RaisingClass()))
{
}

RaisingMeanwhile::~RaisingMeanwhile()
{
    object_setClass(object_, original_);
}

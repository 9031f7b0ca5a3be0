// Cocoa objects and methods that raise.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "tests/support/replaced_method.h"

/// The name of their exceptions; the reason names the selector.
extern NSString *const kRaised;

/// Replaces a host function of any signature.
void *RaiseInHost();

/// The name of the Cocoa exception that the body raises; nil for none.
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

/// An object that raises at every message, even one of its root class.
class RaisingObject {
public:
    RaisingObject();
    ~RaisingObject();
    RaisingObject(const RaisingObject &) = delete;
    RaisingObject &operator=(const RaisingObject &) = delete;

    id Get() const { return object_; }

private:
    id object_;
};

/// While it lives, the class method raises for this class; one at a time. The method has at most three
/// arguments, all of them objects.
class RaisingMethod {
public:
    RaisingMethod(Class cocoaClass, SEL selector);

private:
    ReplacedMethod<id(id, SEL, id, id, id)> replaced_;
};

/// While it lives, an existing object, such as a constant, raises at every message.
class RaisingMeanwhile {
public:
    explicit RaisingMeanwhile(id object);
    ~RaisingMeanwhile();
    RaisingMeanwhile(const RaisingMeanwhile &) = delete;
    RaisingMeanwhile &operator=(const RaisingMeanwhile &) = delete;

private:
    id object_;
    Class original_;
};

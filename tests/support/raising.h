// Cocoa objects and methods that raise, whatever they are asked.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "tests/support/replaced_method.h"

/// The name of the exceptions that they raise; the reason names the selector.
extern NSString *const kRaised;

/// Raises in the place of a host function with any arguments.
void *RaiseInHost();

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

/// An object that raises at every message, those of its root class among them.
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

/// A class method that raises while this lives, sent to this class; one at a time. The method has at most
/// three arguments, all of them objects.
class RaisingMethod {
public:
    RaisingMethod(Class cocoaClass, SEL selector);

private:
    ReplacedMethod<id(id, SEL, id, id, id)> replaced_;
};

/// An object, a constant for one, that raises at every message while this lives.
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

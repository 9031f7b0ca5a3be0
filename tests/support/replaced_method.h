// A method of Cocoa's with an implementation of the test's.
#pragma once

#include <objc/runtime.h>

/// The method is this function while it lives. The runtime looks methods up by class, so a method that the
/// class inherits is replaced for the superclass, too.
template <typename Function>
class ReplacedMethod {
public:
    ReplacedMethod(Method method, Function *replacement)
        : method_(method), original_(method_setImplementation(method, reinterpret_cast<IMP>(replacement)))
    {
    }
    ~ReplacedMethod() { method_setImplementation(method_, original_); }
    ReplacedMethod(const ReplacedMethod &) = delete;
    ReplacedMethod &operator=(const ReplacedMethod &) = delete;

    Function *Original() const { return reinterpret_cast<Function *>(original_); }

private:
    Method method_;
    IMP original_;
};

// Replaces a Cocoa method while a test runs.
#pragma once

#include <objc/runtime.h>

/// While it lives, the method is this function. A method that the class inherits is replaced for the
/// superclass, too.
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

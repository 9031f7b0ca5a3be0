// C++ exceptions for tests in Objective-C++, where a typed catch does not work.
#pragma once

#include <functional>

/// Throws the C++ exception that `EndsThrown` recognises.
[[noreturn]] void ThrowForTest();

/// The same, in place of a host function of any signature.
void *ThrowInHost();

/// Runs `body`; returns whether it threw that exception. Any other passes.
bool EndsThrown(const std::function<void()> &body);

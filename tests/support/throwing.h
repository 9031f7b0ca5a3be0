// C++ exceptions for tests in Objective-C++, where neither a typed catch nor, for safety, a throw stands.
#pragma once

#include <functional>

/// Throws what `EndsThrown` recognises, an exception of the C++ library.
[[noreturn]] void ThrowForTest();

/// The same in the place of a host function with any arguments.
void *ThrowInHost();

/// Runs `body`; returns whether it ended with that exception. Any other passes.
bool EndsThrown(const std::function<void()> &body);

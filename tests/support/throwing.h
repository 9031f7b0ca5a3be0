// C++ exceptions for tests in Objective-C++, where neither a typed catch nor, for safety, a throw stands.
#pragma once

#include <functional>

/// Throws what `EndsThrown` recognises.
[[noreturn]] void ThrowForTest();

/// Runs `body`; answers whether it ended with that exception.
bool EndsThrown(const std::function<void()> &body);

// Exceptions of the C++ library that pass through code that speaks to Cocoa.
#pragma once

#include <functional>

/// Throws an exception that only a test throws.
[[noreturn]] void ThrowStandardException();

/// Whether such an exception comes out of the body; any other passes. Not inline: code that speaks to Cocoa
/// cannot catch it by its type.
bool PassesStandardException(const std::function<void()> &body);

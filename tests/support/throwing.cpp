// Throws and catches C++ exceptions for tests in Objective-C++.
#include "tests/support/throwing.h"

namespace {

struct ThrownForTest {};

} // namespace

void ThrowForTest()
{
    throw ThrownForTest();
}

bool EndsThrown(const std::function<void()> &body)
{
    try {
        body();
    } catch (const ThrownForTest &) {
        return true;
    }
    return false;
}

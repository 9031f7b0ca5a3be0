// Throws and catches C++ exceptions for tests in Objective-C++.
#include "tests/support/throwing.h"

#include <stdexcept>

namespace {

struct ThrownForTest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace

void ThrowForTest()
{
    throw ThrownForTest("thrown by a test");
}

void *ThrowInHost()
{
    ThrowForTest();
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

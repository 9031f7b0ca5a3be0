// Throws and catches exceptions of the C++ library.
#include "tests/bridge/to_host/standard_exceptions.h"

#include <stdexcept>

namespace {

struct ThrownByTest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace

void ThrowStandardException()
{
    throw ThrownByTest("thrown by a test");
}

bool PassesStandardException(const std::function<void()> &body)
{
    try {
        body();
    } catch (const ThrownByTest &) {
        return true;
    }
    return false;
}

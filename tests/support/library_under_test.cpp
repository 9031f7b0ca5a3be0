// Which build of the library the tests drive.
#include "tests/support/library_under_test.h"

#include <cstdlib>

std::string LibraryPath()
{
    const char *const path = std::getenv("QZL_LIBRARY");
    return path != nullptr ? path : QZL_LIBRARY_PATH;
}

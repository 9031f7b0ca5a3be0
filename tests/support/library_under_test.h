// Which build of the library the tests drive.
#pragma once

#include <string>

/// The library that the environment variable QZL_LIBRARY names, or the one for Linux that was built along
/// with the test.
std::string LibraryPath();

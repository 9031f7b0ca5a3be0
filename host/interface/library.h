// Loading a plugin library.
#pragma once

#include <string>

namespace qzlhost {

/// Loads the library for the life of the process and runs its entry point with this resolver. Throws
/// LoadError.
void LoadLibrary(const std::string &path, void *(*resolver)(const char *));

} // namespace qzlhost

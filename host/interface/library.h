// Loading a plugin library.
#pragma once

#include <stdexcept>
#include <string>

namespace qzlhost {

/// A library that cannot be loaded, or has no entry point.
class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Loads the library for the life of the process and runs its entry point with this resolver. Throws
/// LoadError.
void LoadLibrary(const std::string &path, void *(*resolver)(const char *));

} // namespace qzlhost

// Loads Mach-O dylibs into a process on Linux of the same processor.
#pragma once

#include <string>

#include "platform/macho/bytes.h"

namespace macho {

struct LoadedDylib;

/// Whether the file begins as a Mach-O file of any kind does. Throws LoadError, whose text begins with the
/// path, for a file that cannot be opened, and for everything but regular files.
bool IsMachO(const std::string &path);

/// Loads the dylib for good, and runs its initialisers. Throws LoadError, whose text begins with the path.
/// Called on the main thread, once for a file.
const LoadedDylib &LoadDylib(const std::string &path);

/// The address of what the dylib exports under this C name; null if there is nothing.
void *FindSymbol(const LoadedDylib &dylib, const std::string &name);

} // namespace macho

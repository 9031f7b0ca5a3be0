// Loads Mach-O dylibs for x86-64 into a process on Linux.
#pragma once

#include <string>

#include "platform/macho/bytes.h"

namespace macho {

struct LoadedDylib;

/// Whether the file begins as a 64-bit Mach-O file does.
bool IsMachO(const std::string &path);

/// Loads the dylib, and runs what it wants run on loading. It stays for ever. Throws LoadError, whose text
/// begins with the path. On the main thread; a file is loaded once.
LoadedDylib &LoadDylib(const std::string &path);

/// What the dylib exports under this name of the C language; null for nothing.
void *FindSymbol(const LoadedDylib &dylib, const std::string &name);

/// Where the image lies, from the address that the linker gave it: what a debugger has to add to its
/// addresses.
uint64_t SlideOf(const LoadedDylib &dylib);

} // namespace macho

extern "C" {
/// Called after a dylib was loaded and before its code runs: a debugger stops here.
void MachoDylibLoaded(const char *path, uint64_t slide);
}

// Loads Mach-O images into a process on Linux of the same processor.
#pragma once

#include <string>

#include "platform/macho/bytes.h"

namespace macho {

struct LoadedImage;

/// Whether the file begins as a Mach-O file of any kind does. Throws LoadError, whose text begins with the
/// path, for a file that cannot be opened, and for everything but regular files.
bool IsMachO(const std::string &path);

/// Loads the dylib for good, and runs its initialisers. A file that is loaded already gives the same image.
/// Throws LoadError, whose text begins with the path. Called on the main thread.
const LoadedImage &LoadDylib(const std::string &path);

/// Loads the main executable in the same way, and does not run its main function. Called once in a process.
const LoadedImage &LoadProgram(const std::string &path);

/// The address of what the image exports under this C name; null if there is nothing.
void *FindSymbol(const LoadedImage &image, const std::string &name);

/// The main function of a program on macOS: its last argument has the kernel's strings.
using MainFunction = int (*)(int argc, char **argv, char **environment, char **kernel);

/// The main function of a program.
MainFunction FindMain(const LoadedImage &program);

} // namespace macho

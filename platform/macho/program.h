// Runs main executables.
#pragma once

#include <string>

namespace macho {

/// Loads the program whose path is the first of the arguments, calls its main function with them, and returns
/// the function's result. Tasks that it starts with a Mach-O file run the command `runner` with the file and
/// its arguments. Throws LoadError, whose text begins with the path, for a program that cannot be loaded.
/// What the program throws is not caught. Called on the main thread, once in a process.
int RunProgram(int argc, char **argv, const std::string &runner);

} // namespace macho

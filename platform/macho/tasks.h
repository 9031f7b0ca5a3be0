// Tasks (NSTask) that run Mach-O programs.
#pragma once

#include <string>

namespace macho {

/// Makes tasks whose launch path is a program start the command `runner` with that path and the task's
/// arguments, as macOS's kernel starts the program itself. Called once.
void StartProgramsWith(const std::string &runner, bool (*isProgram)(const std::string &path));

} // namespace macho

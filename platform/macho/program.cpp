// Runs main executables.
#include "platform/macho/program.h"

#include <unistd.h>

#include "platform/macho/loader.h"
#include "platform/macho/tasks.h"

namespace macho {

namespace {

/// Whether the file exists and is a Mach-O file.
bool IsProgram(const std::string &path)
{
    try {
        return IsMachO(path);
    } catch (const LoadError &) {
        return false;
    }
}

} // namespace

int RunProgram(int argc, char **argv, const std::string &runner)
{
    StartProgramsWith(runner, IsProgram);
    const std::string path = argv[0];
    const MainFunction main = FindMain(LoadProgram(path));
    std::string executable = "executable_path=" + path;
    char *kernel[] = {executable.data(), nullptr};
    return main(argc, argv, environ, kernel);
}

} // namespace macho

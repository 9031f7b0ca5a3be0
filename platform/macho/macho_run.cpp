// The command macho_run: runs a Mach-O program for macOS.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "platform/macho/messages.h"
#include "platform/macho/program.h"

namespace {

// As shells and the commands that run others say it.
constexpr int kWrongUse = 125, kCannotRun = 126, kNotFound = 127;

int StatusFor(const char *path)
{
    return access(path, F_OK) != 0 && errno == ENOENT ? kNotFound : kCannotRun;
}

/// The absolute path that starts this command again; empty if it is unknown. It comes from the name that the
/// command was called by, because under an emulator nothing else leads back to the emulator.
std::string OwnPath(const char *name)
{
    std::error_code error;
    return std::strchr(name, '/') != nullptr ? std::filesystem::absolute(name, error)
                                             : std::filesystem::read_symlink("/proc/self/exe", error);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fputs("usage: macho_run PROGRAM [ARGUMENT...]\n", stderr);
        return kWrongUse;
    }
    try {
        return macho::RunProgram(argc - 1, argv + 1, OwnPath(argv[0]));
    } catch (const macho::LoadError &error) {
        std::fprintf(stderr, "macho_run: %s\n", error.what());
        return StatusFor(argv[1]);
    }
}

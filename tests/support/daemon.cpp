// A test's own notification daemon, through which GNUstep sends notifications between processes.
#include "tests/support/daemon.h"

#include <filesystem>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

constexpr auto kStartLimit = 30s;

/// The file below the daemon's folder that says where the daemon listens: its registered name in base 64.
constexpr char kRegisteredName[] = "/NSMessagePort/names/R0ROQ1NlcnZlcg==";

EnvironmentVariables ClientsEnvironment(const std::string &folder)
{
    return {{"TEMP", folder}};
}

EnvironmentVariables DaemonsEnvironment(const std::string &folder)
{
    EnvironmentVariables environment = ClientsEnvironment(folder);
    environment.emplace_back("LD_PRELOAD", QZL_MENDED_DAEMON);
    return environment;
}

} // namespace

Daemon::Daemon()
    : process_({"gdnc", "--no-fork"}, DaemonsEnvironment(folder_.Path()), ChildProcess::Pipes::None)
{
    bool registered = false;
    WaitUntil(
        [&] {
            registered = std::filesystem::exists(Folder() + kRegisteredName);
            return registered || process_.HasEnded();
        },
        kStartLimit);
    if (!registered)
        throw std::runtime_error(process_.HasEnded() ? "gdnc ended at once" : "gdnc does not register");
}

EnvironmentVariables Daemon::Environment() const
{
    return ClientsEnvironment(Folder());
}

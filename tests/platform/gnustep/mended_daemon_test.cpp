// What is preloaded into the notification daemon stays out of the programs that the daemon starts.
#include <gtest/gtest.h>

#include <unistd.h>

#include "tests/support/child_process.h"

namespace {

/// LD_PRELOAD in a child of a program that was started with this one, in brackets.
std::string InAChildOfAProgramWith(const std::string &preloaded)
{
    ChildProcess program({"sh", "-c", "echo [$(printenv LD_PRELOAD)]"}, {{"LD_PRELOAD", preloaded}},
                         ChildProcess::Pipes::InputAndOutput);
    std::string output;
    char buffer[1024];
    for (ssize_t size; (size = read(program.Output(), buffer, sizeof buffer)) > 0;)
        output.append(buffer, static_cast<size_t>(size));
    return output;
}

} // namespace

TEST(MendedDaemon, IsNotPreloadedIntoChildren)
{
    EXPECT_EQ(InAChildOfAProgramWith(QZL_MENDED_DAEMON), "[]\n");
}

TEST(MendedDaemon, LeavesWhatElseIsPreloaded)
{
    EXPECT_EQ(InAChildOfAProgramWith("libm.so.6"), "[libm.so.6]\n");
    EXPECT_EQ(InAChildOfAProgramWith("libm.so.6: " QZL_MENDED_DAEMON " libdl.so.2"),
              "[libm.so.6:libdl.so.2]\n");
}

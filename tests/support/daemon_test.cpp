// The tests' own daemon runs as long as its test, and leaves nothing behind.
#include "tests/support/daemon.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "tests/notifications/process_test.h"

namespace {

using namespace std::chrono_literals;

bool Exists(pid_t process)
{
    return kill(process, 0) == 0;
}

} // namespace

TEST(TestDaemon, IsGoneWithItsFolderAfterTheDestructor)
{
    auto daemon = std::make_unique<Daemon>();
    const pid_t process = daemon->ProcessId();
    const std::string folder = daemon->Folder();
    EXPECT_TRUE(Exists(process));
    EXPECT_TRUE(std::filesystem::exists(folder));

    daemon.reset();
    EXPECT_FALSE(Exists(process));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(TestDaemon, IsGoneEvenAfterItsClientsWereKilled)
{
    auto daemon = std::make_unique<Daemon>();
    const pid_t process = daemon->ProcessId();
    const std::string folder = daemon->Folder();
    pid_t client = 0;
    {
        Peer killed(*daemon, "killed");
        Peer left(*daemon, "left to the destructor");
        client = left.ProcessId();
        for (Peer *const peer : {&killed, &left})
            peer->Do(ObserveName("Name"));
        killed.Kill();
        EXPECT_FALSE(killed.IsAlive());
        left.Do(PostName("Name"));
        left.Events(1);
    }
    EXPECT_FALSE(Exists(client));

    daemon.reset();
    EXPECT_FALSE(Exists(process));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(TestDaemon, DiesWithTheTestThatStartedIt)
{
    // Orphaned processes become children of this one.
    ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    struct {
        pid_t process;
        char folder[64];
    } started = {};
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    const pid_t test = fork();
    ASSERT_NE(test, -1);
    if (test == 0) {
        const Daemon daemon;
        started.process = daemon.ProcessId();
        daemon.Folder().copy(started.folder, sizeof started.folder - 1);
        if (write(pipeEnds[1], &started, sizeof started) == sizeof started)
            pause();
        _exit(1);
    }
    ASSERT_EQ(read(pipeEnds[0], &started, sizeof started), static_cast<ssize_t>(sizeof started));

    ASSERT_EQ(kill(test, SIGKILL), 0);
    ASSERT_EQ(waitpid(test, nullptr, 0), test);

    int status = 0;
    EXPECT_TRUE(
        WaitUntil([&] { return waitpid(started.process, &status, WNOHANG) == started.process; }, 30s));
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    std::filesystem::remove_all(started.folder);
}

// As in a test run with one daemon for all tests.
TEST(TestDaemon, IsReachedWhateverFolderTheTestItselfHas)
{
    ASSERT_EQ(setenv("TEMP", "/tmp/qzl-no-such-folder", 1), 0);
    const Daemon daemon;
    Peer peer(daemon, "peer");
    peer.Do(ObserveName("Name"));
    peer.Do(PostName("Name"));
    EXPECT_EQ(peer.Events(1).size(), 1u);
    EXPECT_FALSE(std::filesystem::exists("/tmp/qzl-no-such-folder"));
}

TEST(TestDaemon, CarriesNothingToTheClientsOfAnother)
{
    const Daemon first;
    const Daemon second;
    Peer here(first, "here");
    Peer there(second, "there");
    for (Peer *const peer : {&here, &there})
        peer->Do(ObserveName("Name"));
    here.Do(PostName("Name"));
    EXPECT_EQ(here.Events(1).size(), 1u);
    there.Do({{"do", "settle"}});
    EXPECT_TRUE(there.RemainingEvents().empty());
}

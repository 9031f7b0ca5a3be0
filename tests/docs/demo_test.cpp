// The demo's transcript in docs/ is what the demo prints.
#include <gmock/gmock.h>

#include <sstream>

#include "tests/docs/markdown.h"
#include "tests/qzlhost/command.h"
#include "tests/qzlhost/watching.h"
#include "tests/support/daemon.h"
#include "tests/support/library_under_test.h"

using testing::ElementsAreArray;

namespace {

const std::string kLibrary = LibraryPath();

/// The rest of a line with this beginning; empty for any other line.
std::string After(const std::string &beginning, const std::string &line)
{
    return line.rfind(beginning, 0) == 0 ? line.substr(beginning.size()) : "";
}

} // namespace

TEST(DemoTranscript, OfOneProcessIsWhatTheCommandPrints)
{
    const Daemon daemon;
    std::istringstream output(RunCommand("demo " + kLibrary, daemon.Environment()).output);
    std::vector<std::string> printed;
    for (std::string line; std::getline(output, line);)
        printed.push_back(line);
    EXPECT_THAT(printed, ElementsAreArray(
                             FencedLines(SectionOf(LinesOfDocument("demo.md"), "One process, two threads"))));
}

TEST(DemoTranscript, OfTwoProcessesIsWhatTheCommandsPrint)
{
    const std::string watchCommand = "watch  build/linux/qzlhost watch build/linux/libNotificationsQZL.so ";
    const std::string postCommand = "post   build/linux/qzlhost post build/linux/libNotificationsQZL.so ";
    const std::vector<std::string> transcript =
        FencedLines(SectionOf(LinesOfDocument("demo.md"), "Two processes"));
    ASSERT_GT(transcript.size(), 2u);
    ASSERT_NE(After(watchCommand, transcript[0]), "");
    const Daemon daemon;
    Watching watching(After(watchCommand, transcript[0]), daemon);
    int posts = 0;
    for (size_t i = 1; i < transcript.size(); ++i) {
        const std::string arguments = After(postCommand, transcript[i]);
        if (arguments.empty()) {
            EXPECT_EQ("watch  " + watching.NextLine(), transcript[i]);
            continue;
        }
        ++posts;
        EXPECT_EQ(RunCommand("post " + kLibrary + " " + arguments, daemon.Environment()).output, "");
    }
    EXPECT_EQ(posts, 3);
    EXPECT_EQ(watching.EndStatus(), 0);
}

// The command qzlhost, run as a user runs it.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <string>

#include "tests/qzlhost/command.h"
#include "tests/support/library_under_test.h"

using testing::HasSubstr;

namespace {

const std::string kLibrary = LibraryPath();

} // namespace

TEST(Command, DemoShowsEachNotificationAndEndsWithZero)
{
    const Outcome outcome = RunCommand("demo " + kLibrary);
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_THAT(outcome.output,
                HasSubstr("8 notifications posted, 8 received, 8 of them on the main thread, 0 after"));
    EXPECT_THAT(outcome.output, HasSubstr("Every reference was given back."));
}

TEST(Command, ClassesPrintsATable)
{
    const Outcome outcome = RunCommand("classes " + kLibrary);
    EXPECT_EQ(outcome.status, 0);
    for (const char *text :
         {"NSNotificationObserverQZL", "DRNotificationCenterQZL", "postNotificationName(name as string)",
          "GotNotification(notification as NSNotificationQZL)", "NSNotificationDeliverImmediately = 1"})
        EXPECT_THAT(outcome.output, HasSubstr(text));
}

TEST(Command, ClassesPrintsJson)
{
    const Outcome outcome = RunCommand("classes --json " + kLibrary);
    EXPECT_EQ(outcome.status, 0);
    const auto classes = nlohmann::json::parse(outcome.output);
    ASSERT_EQ(classes.size(), 5u);
    EXPECT_EQ(classes[0]["name"], "NSNotificationObserverQZL");
    EXPECT_EQ(classes[2]["super"], "NSNotificationCenterQZL");
    EXPECT_EQ(classes[2]["constants"].size(), 6u);
    EXPECT_EQ(classes[3]["methods"].size(), 8u);
}

TEST(Command, BadUsageEndsWithTwoAndAMessage)
{
    for (const char *arguments :
         {"", "frobnicate", "classes", "demo", "classes --bogus x", "watch", "post", "post LIBRARY",
          "watch LIBRARY --local --workspace", "watch LIBRARY --count 0", "watch LIBRARY --count many",
          "watch LIBRARY --timeout -1", "post LIBRARY NAME --info keyOnly"}) {
        const Outcome outcome = RunCommand(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.output, HasSubstr("--help")) << arguments;
    }
}

TEST(Command, UnusableLibrariesEndWithTwoAndAMessageThatNamesThem)
{
    const std::string libraries[] = {"/nonexistent/library.so", "/etc/passwd", EMPTY_LIBRARY_PATH};
    for (const std::string &library : libraries) {
        for (const char *command : {"classes ", "demo "}) {
            const Outcome outcome = RunCommand(command + library);
            EXPECT_EQ(outcome.status, 2) << outcome.output;
            EXPECT_THAT(outcome.output, HasSubstr(library));
        }
    }
}

TEST(Command, HelpEndsWithZero)
{
    const Outcome outcome = RunCommand("--help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("classes"));
    EXPECT_THAT(outcome.output, HasSubstr("demo"));
}

TEST(Command, VersionIsTheProjects)
{
    const Outcome outcome = RunCommand("--version");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "qzlhost " QZL_VERSION "\n");
}

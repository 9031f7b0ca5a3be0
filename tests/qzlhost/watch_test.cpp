// qzlhost watch and qzlhost post, run as a user runs them in two terminals.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <deque>

#include "tests/qzlhost/command.h"
#include "tests/qzlhost/watching.h"
#include "tests/support/library_under_test.h"

using nlohmann::json;
using testing::HasSubstr;

namespace {

const std::string kLibrary = LibraryPath();

class Watch : public testing::Test {
protected:
    /// Starts the command and waits until it is ready.
    Watching &Start(const std::string &arguments)
    {
        Watching &watching = watching_.emplace_back(arguments, daemon_);
        EXPECT_EQ(watching.NextLine(), "Watching.");
        return watching;
    }

    Outcome Post(const std::string &arguments) { return Run("post " + kLibrary + " " + arguments); }
    Outcome Run(const std::string &arguments) { return RunCommand(arguments, daemon_.Environment()); }

    void ExpectPosted(const std::string &arguments)
    {
        const Outcome outcome = Post(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, "");
    }

private:
    Daemon daemon_;
    std::deque<Watching> watching_;
};

} // namespace

TEST_F(Watch, PrintsALineForEachNotificationOfAnotherProcessAtOnce)
{
    Watching &watching = Start("--name Doorbell");
    ExpectPosted("Doorbell --distributed");
    EXPECT_EQ(watching.NextLine(), R"("Doorbell" object null userInfo null)");
    ExpectPosted("Doorbell --distributed --object 'front door' --info 'by=a \"friend\"'");
    EXPECT_EQ(watching.NextLine(), R"("Doorbell" object "front door" userInfo {"by":"a \"friend\""})");
}

TEST_F(Watch, PrintsJson)
{
    Watching &watching = Start("--json --distributed --name Doorbell");
    ExpectPosted("Doorbell --distributed --object door --info a=1 --info b= --info c=d=e --info ü=é");
    const json expected = {{"name", "Doorbell"},
                           {"object", "door"},
                           {"userInfo", {{"a", "1"}, {"b", ""}, {"c", "d=e"}, {"ü", "é"}}}};
    EXPECT_EQ(json::parse(watching.NextLine()), expected);
}

TEST_F(Watch, ShowsOnlyTheNameAndTheObjectThatItIsAskedFor)
{
    Watching &named = Start("--name Wanted");
    Watching &ofObject = Start("--object wanted");
    Watching &both = Start("--name Wanted --object wanted");
    ExpectPosted("Other --object other --distributed");
    ExpectPosted("Other --object wanted --distributed");
    ExpectPosted("Wanted --object other --distributed");
    ExpectPosted("Wanted --object wanted --distributed");
    EXPECT_EQ(named.NextLine(), R"("Wanted" object "other" userInfo null)");
    EXPECT_EQ(named.NextLine(), R"("Wanted" object "wanted" userInfo null)");
    EXPECT_EQ(ofObject.NextLine(), R"("Other" object "wanted" userInfo null)");
    EXPECT_EQ(ofObject.NextLine(), R"("Wanted" object "wanted" userInfo null)");
    EXPECT_EQ(both.NextLine(), R"("Wanted" object "wanted" userInfo null)");
}

TEST_F(Watch, EndsAfterTheCount)
{
    Watching &watching = Start("--name Counted --count 2");
    ExpectPosted("Counted --distributed --object 1");
    ExpectPosted("Counted --distributed --object 2");
    EXPECT_EQ(watching.NextLine(), R"("Counted" object "1" userInfo null)");
    EXPECT_EQ(watching.NextLine(), R"("Counted" object "2" userInfo null)");
    EXPECT_EQ(watching.EndStatus(), 0);
}

TEST_F(Watch, EndsWithZeroWhenItIsStopped)
{
    Watching &interrupted = Start("--name Never");
    Watching &terminated = Start("--local");
    interrupted.Interrupt();
    terminated.Terminate();
    EXPECT_EQ(interrupted.EndStatus(), 0);
    EXPECT_EQ(terminated.EndStatus(), 0);
    EXPECT_EQ(interrupted.NextLine(), "") << "every reference was given back";
}

TEST_F(Watch, EndsAfterTheTimeAndFailsOnlyIfACountWasAskedFor)
{
    EXPECT_EQ(Run("watch " + kLibrary + " --name Never --timeout 0.1").status, 0);
    EXPECT_EQ(Run("watch " + kLibrary + " --name Never --timeout 0.1 --count 1").status, 1);
}

TEST_F(Watch, OfTheWorkspaceShowsWhatAnotherProcessPostsThere)
{
    Watching &watching = Start("--workspace --name NSWorkspaceWillPowerOffNotification");
    EXPECT_EQ(Run("post " + kLibrary + " NSWorkspaceWillPowerOffNotification --workspace").status, 0);
    EXPECT_THAT(watching.NextLine(), HasSubstr(R"("NSWorkspaceWillPowerOffNotification" object)"));
}

TEST_F(Watch, WithoutNameAndObjectBetweenProcessesSaysWhyItCannot)
{
    // GNUstep's daemon requires one of them.
    const Outcome outcome = Run("watch " + kLibrary);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, HasSubstr("qzlhost: NSExceptionQZL: notification name and object both nil"));
}

TEST_F(Watch, PostWithoutNameSaysWhyItCannot)
{
    const Outcome outcome = Post("''");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, HasSubstr("qzlhost: NSExceptionQZL: "));
}

TEST_F(Watch, PostInItsOwnProcessReachesNoOther)
{
    Watching &watching = Start("--name Doorbell --count 1");
    ExpectPosted("Doorbell --object own");
    ExpectPosted("Doorbell --object distributed --distributed");
    EXPECT_THAT(watching.NextLine(), HasSubstr("distributed"));
}

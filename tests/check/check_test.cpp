// The program that a Mac's owner runs, run here: what it says, and how it says it.
#include <gmock/gmock.h>
#include <pwd.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <sstream>

#include "tests/check/program.h"
#include "tests/docs/markdown.h"
#include "tests/support/library_under_test.h"
#include "tests/support/private_folder.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

namespace {

/// The characters of a text in UTF-8.
size_t Width(const std::string &text)
{
    size_t width = 0;
    for (const char byte : text)
        width += (static_cast<unsigned char>(byte) & 0xC0) == 0x80 ? 0 : 1;
    return width;
}

std::vector<std::string> TextLines(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The cells of the table of beliefs, without Markdown's escapes.
std::vector<std::vector<std::string>> Beliefs()
{
    std::vector<std::vector<std::string>> rows;
    for (const std::string &line : SectionOf(LinesOfDocument("macos-beliefs.md"), "The beliefs")) {
        if (line.rfind("| ", 0) != 0 || line.rfind("| Line |", 0) == 0 || line.rfind("| ---", 0) == 0)
            continue;
        std::vector<std::string> cells;
        std::istringstream stream(line.substr(2));
        for (std::string cell; std::getline(stream, cell, '|');) {
            std::erase(cell, '\\');
            cell.erase(cell.find_last_not_of(' ') + 1);
            cells.push_back(cell.substr(
                cell.find_first_not_of(' ') == std::string::npos ? 0 : cell.find_first_not_of(' ')));
        }
        rows.push_back(cells);
    }
    return rows;
}

std::string FileText(const std::string &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The UUID of a thin Mach-O file, in hexadecimal digits; "none" for a file of another kind.
std::string UuidOfFile(const std::string &path)
{
    constexpr uint32_t kMagic = 0xFEEDFACF, kUuid = 0x1B;
    constexpr size_t kHeaderSize = 32, kCommandHeaderSize = 8, kUuidSize = 16;
    const std::string file = FileText(path);
    const auto word = [&](size_t offset) {
        uint32_t value = 0;
        std::memcpy(&value, file.substr(offset).c_str(), sizeof value);
        return value;
    };
    if (word(0) != kMagic)
        return "none";
    size_t command = kHeaderSize;
    while (word(command) != kUuid)
        command += word(command + sizeof(uint32_t));
    std::string digits;
    for (const char byte : file.substr(command + kCommandHeaderSize, kUuidSize)) {
        for (const int shift : {4, 0})
            digits += "0123456789ABCDEF"[(byte >> shift) & 0xF];
    }
    return digits;
}

} // namespace

class NotificationsCheck : public testing::Test {
protected:
    const Daemon daemon;
};

TEST_F(NotificationsCheck, FindsThatEverythingHoldsAndIsAsOnLinux)
{
    const Outcome outcome = RunCheck("--json", daemon);
    EXPECT_EQ(outcome.status, 0);
    size_t checks = 0, facts = 0;
    for (const ReportLine &line : LinesOfReport(outcome.output)) {
        ++(line.kind == "check" ? checks : facts);
        const bool isDifferentEachTime = line.kind == "fact" && line.expected.empty();
        if (!isDifferentEachTime)
            EXPECT_EQ(line.came, line.expected) << line.what;
    }
    EXPECT_GE(checks, 60u);
    EXPECT_GE(facts, 50u);
}

TEST_F(NotificationsCheck, HasABeliefOfEachFactInTheDocument)
{
    std::vector<std::vector<std::string>> facts, beliefs;
    for (const ReportLine &line : LinesOfReport(RunCheck("--json", daemon).output)) {
        if (line.kind == "fact")
            facts.push_back({line.what, line.expected.empty() ? "any" : line.expected});
    }
    for (const std::vector<std::string> &row : Beliefs()) {
        ASSERT_THAT(row, SizeIs(4)) << row.front();
        EXPECT_THAT(row[2], Not(IsEmpty())) << row.front();
        beliefs.push_back({row[0], row[1]});
    }
    EXPECT_THAT(beliefs, ElementsAreArray(facts));
}

TEST_F(NotificationsCheck, FitsEightyColumnsWithoutColourAwayFromATerminal)
{
    const Outcome outcome = RunCheck("", daemon);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
    const std::vector<std::string> lines = TextLines(outcome.output);
    EXPECT_GT(lines.size(), 100u);
    for (const std::string &line : lines)
        EXPECT_LE(Width(line), 80u) << line;
    EXPECT_THAT(lines.back(), HasSubstr(" checks: "));
}

TEST_F(NotificationsCheck, IsColouredOnATerminal)
{
    EXPECT_THAT(RunCheckOnTerminal("", daemon).output, HasSubstr("\x1b[32m ok  \x1b[0m"));
}

TEST_F(NotificationsCheck, IsNotColouredIfTheEnvironmentForbidsIt)
{
    const Outcome outcome = RunCheckOnTerminal("/none/lib.dylib", daemon, "NO_COLOR=1");
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("FAIL The library is loaded"), Not(HasSubstr("\x1b["))));
}

TEST_F(NotificationsCheck, WritesAReportOfTheBuildAndTheSystemThatNamesNeitherThePersonNorTheMachine)
{
    const PrivateFolder folder;
    const std::string path = folder.Path("report.json");
    const Outcome outcome = RunCheck("--report " + path, daemon, "HOME=/home/ada-lovelace USER=ada-lovelace");
    EXPECT_EQ(outcome.status, 0);
    const std::string text = FileText(path);
    const nlohmann::json report = nlohmann::json::parse(text);
    for (const char *key :
         {"version", "system", "architecture", "machine", "library", "sha256", "summary", "log"})
        EXPECT_TRUE(report.contains(key)) << key;
    EXPECT_THAT(report.at("sha256").get<std::string>(), SizeIs(64));
    std::vector<std::string> uuids;
    for (const ReportLine &line : LinesOfReport(text)) {
        if (line.what == "The library's UUID")
            uuids.push_back(line.came);
    }
    EXPECT_THAT(uuids, ElementsAre(UuidOfFile(LibraryPath())));
    EXPECT_THAT(text, Not(HasSubstr("ada-lovelace")));
    char host[256] = {};
    gethostname(host, sizeof host);
    EXPECT_THAT(text, Not(HasSubstr(host)));
}

TEST_F(NotificationsCheck, PrintsJsonAloneEvenIfItCannotWriteTheReport)
{
    const PrivateFolder folder;
    const std::string arguments = "--json --report " + folder.Path("none/report.json") + " 2>";
    const Outcome outcome = RunCheck(arguments + folder.Path("errors"), daemon);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(LinesOfReport(outcome.output), Not(IsEmpty()));
    EXPECT_THAT(FileText(folder.Path("errors")), HasSubstr("The report could not be written to "));
}

TEST_F(NotificationsCheck, SaysWhyALibraryIsNotLoadedWithoutNamingTheHomeFolder)
{
    const std::string home = getpwuid(geteuid())->pw_dir;
    ASSERT_GT(home.size(), 1u);
    const Outcome outcome = RunCheck(home + "/none/lib.dylib", daemon);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("FAIL The library is loaded"), HasSubstr("~/none/lib.dylib"),
                                      HasSubstr("\n1 check: 0 hold, 1 fails. "), Not(HasSubstr(home + "/"))));
}

TEST_F(NotificationsCheck, ExplainsItsArguments)
{
    EXPECT_EQ(RunCheck("--help", daemon).status, 0);
    EXPECT_THAT(RunCheck("--help", daemon).output, StartsWith("Usage: notifications-check"));
    EXPECT_EQ(RunCheck("--version", daemon).output, "notifications-check " QZL_VERSION "\n");
    for (const char *wrong : {"--nonsense", "one two", "--report"}) {
        const Outcome outcome = RunCheck(wrong + std::string(" 2>&1 >/dev/null"), daemon);
        EXPECT_EQ(outcome.status, 2) << wrong;
        EXPECT_THAT(outcome.output, StartsWith("Usage: ")) << wrong;
    }
}

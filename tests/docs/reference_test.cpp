// The reference in docs/ lists what the library registers, no less and no more.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/docs/markdown.h"
#include "tests/qzlhost/command.h"
#include "tests/support/library_under_test.h"

using nlohmann::json;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

/// The first cell of each row of the section's tables that holds code, without its quotes.
std::vector<std::string> DocumentedMembers(const std::vector<std::string> &section)
{
    std::vector<std::string> members;
    for (const std::string &line : section) {
        if (line.rfind("| `", 0) == 0)
            members.push_back(line.substr(3, line.find('`', 3) - 3));
    }
    return members;
}

/// In the reference's order: members of instances, shared methods, constants.
std::vector<std::string> RegisteredMembers(const json &type)
{
    std::vector<std::string> members;
    for (const json &property : type["properties"])
        members.push_back(property["name"].get<std::string>() + " as " + property["type"].get<std::string>());
    for (const char *kind : {"methods", "events", "sharedMethods", "constants"}) {
        for (const json &member : type[kind])
            members.push_back(member["declaration"]);
    }
    return members;
}

std::string NameOf(const std::string &declaration)
{
    return declaration.substr(0, declaration.find_first_of("( ="));
}

json RegisteredClasses()
{
    return json::parse(RunCommand("classes --json " + LibraryPath()).output);
}

} // namespace

TEST(Reference, ListsEveryMemberOfEveryClassAndNoOther)
{
    const std::vector<std::string> reference = LinesOfDocument("reference.md");
    const json classes = RegisteredClasses();
    ASSERT_EQ(classes.size(), 5u);
    for (const json &type : classes) {
        SCOPED_TRACE(type["name"]);
        EXPECT_THAT(DocumentedMembers(SectionOf(reference, type["name"])),
                    ElementsAreArray(RegisteredMembers(type)));
    }
}

TEST(Reference, ItsProgramsUseEveryMember)
{
    const std::vector<std::string> reference = LinesOfDocument("reference.md");
    for (const json &type : RegisteredClasses()) {
        SCOPED_TRACE(type["name"]);
        std::string program;
        for (const std::string &line : FencedLines(SectionOf(reference, type["name"])))
            program += line + "\n";
        for (const std::string &member : RegisteredMembers(type)) {
            const bool isConstructor = NameOf(member) == "Constructor";
            const std::string use = isConstructor ? "New " + type["name"].get<std::string>() : NameOf(member);
            // Programs make observers of a class that they derive from it.
            if (!isConstructor || type["name"] != "NSNotificationObserverQZL")
                EXPECT_THAT(program, HasSubstr(use));
        }
    }
}

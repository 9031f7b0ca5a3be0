// The changelog begins with the project's version.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/docs/markdown.h"

TEST(Changelog, BeginsWithTheVersionOfTheProject)
{
    const std::vector<std::string> lines = LinesOfDocument("../CHANGELOG.md");
    const auto newest = std::find_if(lines.begin(), lines.end(),
                                     [](const std::string &line) { return line.rfind("## ", 0) == 0; });
    ASSERT_NE(newest, lines.end());
    EXPECT_EQ(*newest, "## " QZL_VERSION);
}

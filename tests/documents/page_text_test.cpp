#include "documents/pages.h"

#include <gtest/gtest.h>

using namespace documents;

using Blocks = std::vector<FencedBlock>;
using Rows = std::vector<TableRow>;

TEST(FencedBlocks, areThoseOfTheGivenKind)
{
    const char page[] = "# a\n```dump one\n00  0A\n```\ntext\n```\nplain\n```\n"
                        "```decoded one\nkind: x\n\n```\n```dump two\n```\n";
    EXPECT_EQ(fencedBlocks(page, "dump"),
              (Blocks{{"dump", "one", 2, {"00  0A"}}, {"dump", "two", 13, {}}}));
    EXPECT_EQ(fencedBlocks(page, "decoded"), (Blocks{{"decoded", "one", 9, {"kind: x", ""}}}));
}

TEST(FencedBlocks, doNotNest)
{
    EXPECT_EQ(fencedBlocks("```\n ```dump one\n```\n", "dump"), Blocks{});
}

TEST(FencedBlocks, mayLackANameAndAnEnd)
{
    EXPECT_EQ(fencedBlocks("```dump\n00  0A", "dump"), (Blocks{{"dump", "", 1, {"00  0A"}}}));
}

TEST(PageTable, isTheFirstOneBelowItsHeading)
{
    const char page[] =
        "| a | b |\n|---|---|\n| 0 | 0 |\n\n## Here\n\ntext\n\n| c | d |\n|---|---|\n"
        "| 1 | 2 |\n| 3 |  |\n\n| e |\n|---|\n| 5 |\n";
    EXPECT_EQ(tableBelow(page, "## Here"), (Rows{{"1", "2"}, {"3", ""}}));
}

TEST(PageTable, isNotFoundBelowTheNextHeading)
{
    EXPECT_EQ(tableBelow("## Here\n\n## There\n\n| a |\n|---|\n| 1 |\n", "## Here"), Rows{});
    EXPECT_EQ(tableBelow("| a |\n|---|\n| 1 |\n", "## Here"), Rows{});
}

TEST(PageTable, keepsABarThatIsText)
{
    EXPECT_EQ(tableBelow("## Here\n| a | b |\n|---|---|\n| `1\\|2` | 3 |\n", "## Here"),
              (Rows{{"`1|2`", "3"}}));
}

TEST(PageTable, returnsTheCodeInACell)
{
    EXPECT_EQ(codeIn("all of `abc`, not `d`"), "abc");
    EXPECT_EQ(codeIn("none"), "");
    EXPECT_EQ(codeIn("`open"), "");
}

TEST(PagePattern, matchesAnyTextInItsGaps)
{
    EXPECT_TRUE(isLike("--about", "--about"));
    EXPECT_FALSE(isLike("--about ", "--about"));
    EXPECT_TRUE(isLike("--commit \"C:\\a b.mcam\"", "--commit \"<file>\""));
    EXPECT_FALSE(isLike("--commit \"\"", "--commit \"<file>\""));
    EXPECT_FALSE(isLike("--commit \"a\" --id 1", "--commit \"<file>\""));
    EXPECT_TRUE(isLike("a1b2c", "a<x>b<y>c"));
    EXPECT_FALSE(isLike("a1b2", "a<x>b<y>c"));
}

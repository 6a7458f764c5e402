#include "documents/fenced_block.h"

#include <gtest/gtest.h>

using namespace documents;

using Blocks = std::vector<FencedBlock>;

TEST(FencedBlocks, areThoseWithTheWord)
{
    const char page[] = "# a\n```dump one\n00  0A\n```\ntext\n```\nplain\n```\n"
                        "```decoded one\nkind: x\n\n```\n```dump two\n```\n";
    EXPECT_EQ(fencedBlocks(page, "dump"),
              (Blocks{{"dump", "one", 2, {"00  0A"}}, {"dump", "two", 13, {}}}));
    EXPECT_EQ(fencedBlocks(page, "decoded"), (Blocks{{"decoded", "one", 9, {"kind: x", ""}}}));
}

TEST(FencedBlocks, areNotSoughtInsideAnother)
{
    EXPECT_EQ(fencedBlocks("```\n ```dump one\n```\n", "dump"), Blocks{});
}

TEST(FencedBlocks, mayLackANameAndAnEnd)
{
    EXPECT_EQ(fencedBlocks("```dump\n00  0A", "dump"), (Blocks{{"dump", "", 1, {"00  0A"}}}));
}

TEST(FencedBlocks, areJoinedWithTheirLineFeeds)
{
    EXPECT_EQ(joined({"a", "", "b"}), "a\n\nb\n");
}

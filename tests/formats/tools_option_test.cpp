#include "formats/tools_option.h"

#include <gtest/gtest.h>

using torvapdm::asksForTools;

TEST(ToolsOption, isOnForALowerCaseY)
{
    EXPECT_TRUE(asksForTools("AlwaysSaveTools=y\n"));
    EXPECT_TRUE(asksForTools("AlwaysSaveTools=y"));
    EXPECT_TRUE(asksForTools("; XAlwaysSaveTools=yes, please\n"));
    EXPECT_TRUE(asksForTools("AlwaysSaveTools=Y AlwaysSaveTools=y\n"));
}

TEST(ToolsOption, isOffOtherwise)
{
    EXPECT_FALSE(asksForTools("AlwaysSaveTools=Y\n"));
    EXPECT_FALSE(asksForTools("AlwaysSaveTools=n\n"));
    EXPECT_FALSE(asksForTools("AlwaysSaveTools = y\n"));
    EXPECT_FALSE(asksForTools("alwayssavetools=y\n"));
    EXPECT_FALSE(asksForTools("\n"));
    EXPECT_FALSE(asksForTools(""));
}

#include "formats/settings_file.h"

#include <gtest/gtest.h>

using torvapdm::hasAlwaysSaveTools;

TEST(ToolsOption, isOnForALowerCaseY)
{
    EXPECT_TRUE(hasAlwaysSaveTools("AlwaysSaveTools=y\n"));
    EXPECT_TRUE(hasAlwaysSaveTools("AlwaysSaveTools=y"));
    EXPECT_TRUE(hasAlwaysSaveTools("; XAlwaysSaveTools=yes, please\n"));
    EXPECT_TRUE(hasAlwaysSaveTools("AlwaysSaveTools=Y AlwaysSaveTools=y\n"));
}

TEST(ToolsOption, isOffOtherwise)
{
    EXPECT_FALSE(hasAlwaysSaveTools("AlwaysSaveTools=Y\n"));
    EXPECT_FALSE(hasAlwaysSaveTools("AlwaysSaveTools=n\n"));
    EXPECT_FALSE(hasAlwaysSaveTools("AlwaysSaveTools = y\n"));
    EXPECT_FALSE(hasAlwaysSaveTools("alwayssavetools=y\n"));
    EXPECT_FALSE(hasAlwaysSaveTools("\n"));
    EXPECT_FALSE(hasAlwaysSaveTools(""));
}

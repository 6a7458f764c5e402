#include "peer/lines.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(PeerFileLines, endWithLineFeedOrCrLf)
{
    using Expected = std::vector<std::string_view>;
    EXPECT_EQ(fileLines(""), Expected{});
    EXPECT_EQ(fileLines("a\r\n\r\nb\nc"), (Expected{"a", "", "b", "c"}));
    EXPECT_EQ(fileLines("\n"), Expected{""});
    EXPECT_EQ(fileLines("a\rb\r"), Expected{"a\rb"});
}

#include "peer/working_copies_file.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(WorkingCopiesFile, hasACopyInEachLine)
{
    const auto copies = parseWorkingCopies(L"17 | 42 | C:\\a b | c\n- | 43 | C:\\b\n-7 | 0 | \n");
    ASSERT_EQ(copies.size(), 3u);
    ASSERT_TRUE(copies[0] && copies[1] && copies[2]);
    EXPECT_EQ(copies[0]->id, 17);
    EXPECT_EQ(copies[0]->number, 42);
    EXPECT_EQ(copies[0]->path, L"C:\\a b | c");
    EXPECT_EQ(copies[1]->id, std::nullopt);
    EXPECT_EQ(copies[2]->id, -7);
    EXPECT_EQ(copies[2]->path, L"");
    EXPECT_EQ(formatWorkingCopy(*copies[0]), L"17 | 42 | C:\\a b | c\n");
    EXPECT_EQ(formatWorkingCopy(*copies[1]), L"- | 43 | C:\\b\n");
}

TEST(WorkingCopiesFile, keepsThePlaceOfOtherLines)
{
    const auto copies =
        parseWorkingCopies(L"\n17 | 17\nx | 17 | C:\\a\n17 | -1 | C:\\a\n1 | 2 | C:\\a");
    ASSERT_EQ(copies.size(), 5u);
    for (size_t i = 0; i < 4; ++i)
        EXPECT_FALSE(copies[i]) << i;
    EXPECT_TRUE(copies[4]);
}

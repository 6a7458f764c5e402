#include "incoming/recent_files.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

std::vector<CompanionFile> openedInOrder(int count)
{
    std::vector<CompanionFile> files;
    for (int i = 1; i <= count; ++i)
        addRecentFile(files, {i, L"C:\\" + std::to_wstring(i)});
    return files;
}

} // namespace

TEST(RecentFileList, putsTheNewestFirst)
{
    const auto files = openedInOrder(3);
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].path, L"C:\\3");
    EXPECT_EQ(files[0].id, 3);
    EXPECT_EQ(files[2].path, L"C:\\1");
}

TEST(RecentFileList, keepsTheNewerIdOfAPath)
{
    auto files = openedInOrder(3);
    addRecentFile(files, {99, L"C:\\1"});
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].path, L"C:\\1");
    EXPECT_EQ(files[0].id, 99);
    EXPECT_EQ(files[2].path, L"C:\\2");
}

TEST(RecentFileList, distinguishesPathsByCase)
{
    auto files = openedInOrder(1);
    addRecentFile(files, {2, L"c:\\1"});
    EXPECT_EQ(files.size(), 2u);
}

TEST(RecentFileList, holdsTwentyOneFiles)
{
    EXPECT_EQ(openedInOrder(20).size(), 20u);
    EXPECT_EQ(openedInOrder(21).size(), 21u);
    const auto files = openedInOrder(22);
    ASSERT_EQ(files.size(), 21u);
    EXPECT_EQ(files.front().path, L"C:\\22");
    EXPECT_EQ(files.back().path, L"C:\\2");
}

TEST(RecentFileList, evictsNothingForAKnownPath)
{
    auto files = openedInOrder(21);
    addRecentFile(files, {5, L"C:\\5"});
    EXPECT_EQ(files.size(), 21u);
    EXPECT_EQ(files.back().path, L"C:\\1");
}

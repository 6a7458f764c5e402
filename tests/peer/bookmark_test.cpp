#include "peer/bookmark.h"

#include <gtest/gtest.h>

using namespace peer;

namespace {

void expectText(const Bookmark& bookmark, const std::wstring& text)
{
    EXPECT_EQ(formatBookmark(bookmark), text);
    const auto read = parseBookmark(text);
    ASSERT_TRUE(read.has_value()) << text;
    EXPECT_EQ(formatBookmark(*read), text);
    EXPECT_EQ(read->taken, bookmark.taken);
    EXPECT_EQ(read->isFinished, bookmark.isFinished);
}

} // namespace

TEST(PeerBookmark, countsTakenBytes)
{
    expectText({}, L"taken 0\n");
    expectText({.taken = 84}, L"taken 84\n");
    expectText({.taken = 5'000'000'000}, L"taken 5000000000\n");
}

TEST(PeerBookmark, containsTheVersionInProgress)
{
    expectText({.taken = 84, .underWay = VersionPlan{17, 2, L"pump cover"}},
               L"taken 84\nstoring 17 2 pump cover\n");
    const auto read = parseBookmark(L"taken 84\nstoring 17 2 pump cover\n");
    ASSERT_TRUE(read && read->underWay);
    EXPECT_EQ(read->underWay->number, 17);
    EXPECT_EQ(read->underWay->version, 2);
    EXPECT_EQ(read->underWay->name, L"pump cover");
}

TEST(PeerBookmark, canBeFinished)
{
    expectText({.isFinished = true}, L"finished\n");
    expectText({.taken = 0, .underWay = {}, .isFinished = true}, L"finished\n");
}

TEST(PeerBookmark, isRejectedWhenIncomplete)
{
    for (const wchar_t* text :
         {L"", L"taken 84", L"taken \n", L"taken -1\n", L"taken 84\n\n", L"finished", L"done\n",
          L"taken 84\nstoring 17 2 bracket", L"taken 84\nstoring 17 2 \n",
          L"taken 84\nstoring 0 2 bracket\n", L"taken 84\nstoring 17 bracket\n",
          L"taken 84\nstoring 17 2 bracket\nmore\n"})
        EXPECT_FALSE(parseBookmark(text).has_value()) << text;
}

#include "standin/companion/library/library.h"
#include "standin/companion/library/library_index.h"

#include <gtest/gtest.h>

using namespace companion;

namespace companion {

bool operator==(const LibraryItem& a, const LibraryItem& b)
{
    return a.number == b.number && a.name == b.name && a.version == b.version &&
           a.ncPath == b.ncPath && a.machine == b.machine && a.description == b.description;
}

} // namespace companion

namespace {

constexpr std::wstring_view twoItems = L"17|bracket|1|3|C:\\M\\Mill 3.mmd|Mounting bracket\n"
                                       L"42|Clamp Jaw|2|0||Make two\n";

void expectLineLeftOut(const std::wstring& line)
{
    const std::wstring text = line + L"\n23|flange|1|3||Flange\n";
    const LibraryIndex index = readLibraryIndex(text);
    ASSERT_EQ(index.items.size(), 1u) << line;
    EXPECT_EQ(index.items[0].name, L"flange") << line;
    EXPECT_EQ(index.badLines, std::vector<int>{1}) << line;
}

} // namespace

TEST(LibraryIndex, listsItemsInFileOrder)
{
    const LibraryIndex index = readLibraryIndex(twoItems);
    ASSERT_EQ(index.items.size(), 2u);
    EXPECT_TRUE(index.badLines.empty());
    EXPECT_TRUE((index.items[0] ==
                 LibraryItem{17, L"bracket", 1, 3, L"C:\\M\\Mill 3.mmd", L"Mounting bracket"}));
    EXPECT_TRUE((index.items[1] == LibraryItem{42, L"Clamp Jaw", 2, 0, L"", L"Make two"}));
}

TEST(LibraryIndex, notesTheLineOfEachItem)
{
    const LibraryIndex index = readLibraryIndex(L"# a\n17|a|1|0||\nbad\n\n18|b|1|0||");
    ASSERT_EQ(index.items.size(), 2u);
    EXPECT_EQ(index.items[0].line, 2);
    EXPECT_EQ(index.items[1].line, 5);
}

TEST(LibraryIndex, ignoresSpacesAroundFields)
{
    const LibraryIndex index = readLibraryIndex(L"  7 |\tpump  cover | 3 | 5 | a b |  c d \r\n");
    ASSERT_EQ(index.items.size(), 1u);
    EXPECT_TRUE((index.items[0] == LibraryItem{7, L"pump  cover", 3, 5, L"a b", L"c d"}));
}

TEST(LibraryIndex, allowsBarsInTheDescription)
{
    const LibraryIndex index = readLibraryIndex(L"7|a|1|0|m|one | two|three");
    ASSERT_EQ(index.items.size(), 1u);
    EXPECT_EQ(index.items[0].description, L"one | two|three");
}

TEST(LibraryIndex, ignoresCommentsEmptyLinesAndMark)
{
    const LibraryIndex index =
        readLibraryIndex(L"\xFEFF# number | name\n\n   \n  # 1|a|1|0||\n7|a|1|0||d\nbad\n");
    ASSERT_EQ(index.items.size(), 1u);
    EXPECT_EQ(index.badLines, std::vector<int>{6});
}

TEST(LibraryIndex, isEmptyForAnEmptyText)
{
    const LibraryIndex index = readLibraryIndex(L"");
    EXPECT_TRUE(index.items.empty());
    EXPECT_TRUE(index.badLines.empty());
}

TEST(LibraryIndex, rejectsMissingFields)
{
    for (const wchar_t* line : {L"17", L"17|a|1|3|machine", L"|||||", L"17||1|3|m|d"})
        expectLineLeftOut(line);
}

TEST(LibraryIndex, rejectsNumbersOutOfRange)
{
    for (const wchar_t* line :
         {L"0|a|1|3|m|d", L"2147483648|a|1|3|m|d", L"-1|a|1|3|m|d", L"x|a|1|3|m|d", L"17|a|0|3|m|d",
          L"17|a|2147483648|3|m|d", L"17|a|1|-1|m|d", L"17|a|1|2147483648|m|d", L"17|a|1 2|3|m|d",
          L"17|a||3|m|d"})
        expectLineLeftOut(line);
}

TEST(LibraryIndex, acceptsTheLargestNumbers)
{
    const LibraryIndex index = readLibraryIndex(L"2147483647|a|2147483647|2147483647||");
    ASSERT_EQ(index.items.size(), 1u);
    EXPECT_TRUE(
        (index.items[0] == LibraryItem{2147483647, L"a", 2147483647, 2147483647, L"", L""}));
}

TEST(LibraryIndex, rejectsNamesThatLeaveTheFolder)
{
    for (const wchar_t* name : {L".", L"..", L"...", L"a\\b", L"..\\a", L"a/b", L"C:", L"a*", L"a?",
                                L"a\"", L"a<", L"a>"})
        expectLineLeftOut(L"17|" + std::wstring(name) + L"|1|3|m|d");
}

TEST(LibraryIndex, rejectsDuplicateNumbersAndNames)
{
    const LibraryIndex index = readLibraryIndex(std::wstring(twoItems) +
                                                L"17|other|1|3||d\n43|BRACKET|1|3||d\n43|x|1|3||d");
    ASSERT_EQ(index.items.size(), 3u);
    EXPECT_EQ(index.items[2].name, L"x");
    EXPECT_EQ(index.badLines, (std::vector<int>{3, 4}));
}

TEST(LibraryItem, isFoundIgnoringCase)
{
    const LibraryIndex index = readLibraryIndex(twoItems);
    for (const wchar_t* asked : {L"bracket", L"BrackeT", L"17"})
        EXPECT_EQ(findItem(index, asked), &index.items[0]) << asked;
    for (const wchar_t* asked : {L"clamp jaw", L"42"})
        EXPECT_EQ(findItem(index, asked), &index.items[1]) << asked;
}

TEST(LibraryItem, isNullIfNotInTheIndex)
{
    const LibraryIndex index = readLibraryIndex(twoItems);
    for (const wchar_t* asked : {L"", L"brack", L"bracket ", L"1", L"017", L"+17"})
        EXPECT_EQ(findItem(index, asked), nullptr) << asked;
}

TEST(LibraryItem, isFoundByNameOrByNumber)
{
    const LibraryIndex index = readLibraryIndex(L"1|2|1|0||\n2|b|1|0||\n");
    EXPECT_EQ(findName(index, L"2"), &index.items[0]);
    EXPECT_EQ(findNumber(index, 2), &index.items[1]);
    EXPECT_EQ(findName(index, L"1"), nullptr);
    EXPECT_EQ(findNumber(index, 3), nullptr);
}

TEST(LibraryItem, namesItsFile)
{
    EXPECT_EQ(versionFile({31, L"pump cover", 12, 5, L"", L""}), L"pump cover\\v12.mcam");
}

TEST(Operations, areCountedBySections)
{
    EXPECT_EQ(countOperations("mastercam part 1\n[operation]\nid = 1\n\n[operation]\n"), 2);
    EXPECT_EQ(countOperations("\xEF\xBB\xBF[operation]\r\n[operation]"), 2);
    EXPECT_EQ(countOperations("[no operation]\n# [operation]\nname = [operation]\n[operations]\n"),
              0);
    EXPECT_EQ(countOperations(""), 0);
}

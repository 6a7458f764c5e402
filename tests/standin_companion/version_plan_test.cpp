// How a committed file becomes a version: file names, index entry, part.
#include "standin/companion/library/library_index.h"
#include "standin/companion/library/version_plan.h"
#include "standin/companion/library/working_copies.h"

#include <gtest/gtest.h>

using namespace companion;

namespace {

const LibraryIndex library = readLibraryIndex(L"17|bracket|2|3|m|d\n"
                                              L"42|Clamp Jaw|1|0||d\n");

WorkingCopies copies()
{
    return readWorkingCopies(L"17 | 17 | C:\\work\\bracket.mcam\n"
                             L"107 | 42 | C:\\work\\clamp jaw.mcam\n"
                             L"-7 | 42 | \n"
                             L"55 | 0 | \n"
                             L"- | 43 | C:\\gone.mcam\n");
}

std::optional<std::int32_t> partOf(std::uint32_t id, const std::wstring& file)
{
    return partOfCommit(copies(), library, {id, file});
}

LibraryItem item(std::int32_t number, const std::wstring& name)
{
    LibraryItem made;
    made.number = number;
    made.name = name;
    return made;
}

} // namespace

TEST(VersionPlan, namesPartFileAndPicture)
{
    EXPECT_EQ(versionFile(peer::VersionPlan{31, 12, L"pump cover"}), L"pump cover\\v12.mcam");
    EXPECT_EQ(pictureFile(peer::VersionPlan{31, 12, L"pump cover"}), L"pump cover\\v12.bmp");
}

TEST(VersionPlan, isInTheIndexFromItsVersionOn)
{
    EXPECT_TRUE(isInIndex(library, {17, 1, L"bracket"}));
    EXPECT_TRUE(isInIndex(library, {17, 2, L"BRACKET"}));
    EXPECT_FALSE(isInIndex(library, {17, 3, L"bracket"}));
    EXPECT_FALSE(isInIndex(library, {42, 1, L"flange"}));
}

TEST(NewPart, getsTheNextNumber)
{
    EXPECT_EQ(freeNumber(library), 43);
    EXPECT_EQ(freeNumber({}), 1);
}

TEST(NewPart, getsAFreeNumberBelowTheLargest)
{
    LibraryIndex full;
    full.items = {item(2147483647, L"a"), item(2147483646, L"b")};
    EXPECT_EQ(freeNumber(full), 2147483645);
}

TEST(NewPart, isNamedAfterItsFile)
{
    const std::pair<const wchar_t*, const wchar_t*> names[] = {
        {L"C:\\parts\\plate 40.mcam", L"plate 40"},
        {L"C:\\parts\\plate.v2.mcam", L"plate.v2"},
        {L"C:\\parts\\plate", L"plate"},
        {L"C:\\parts\\\u4E2D\u00E4.mcam", L"\u4E2D\u00E4"},
        {L"C:\\parts\\.mcam", L"part"},
        {L"C:\\parts\\.. .mcam", L"part"},
        {L"C:\\parts\\ a . .mcam", L"a"},
        {L"C:\\parts\\a|b:c.mcam", L"a_b_c"},
        {L"C:\\parts\\\xD83D\xDE00.mcam", L"\xD83D\xDE00"},
        {L"C:\\parts\\a\xD83D.mcam", L"a_"},
        {L"C:\\parts\\\xDE00\xD83D.mcam", L"__"}};
    for (const auto& [file, name] : names)
        EXPECT_EQ(newPartName(library, file), name);
}

TEST(NewPart, getsAnUnusedName)
{
    EXPECT_EQ(newPartName(library, L"D:\\BRACKET.mcam"), L"BRACKET-2");
    const LibraryIndex two = readLibraryIndex(L"1|a|1|0||\n2|a-2|1|0||\n");
    EXPECT_EQ(newPartName(two, L"D:\\a.mcam"), L"a-3");
}

TEST(IndexEdit, changesOnlyTheVersion)
{
    const std::string index = "\xEF\xBB\xBF# a | b | c\r\n\n"
                              "17 | br\xC3\xA4"
                              "cket |  1 | 3 | m | d | 1 | x\r\nbad \xFF\n"
                              "42|jaw|9|0||d";
    EXPECT_EQ(withVersion(index, 3, 2), "\xEF\xBB\xBF# a | b | c\r\n\n"
                                        "17 | br\xC3\xA4"
                                        "cket |  2 | 3 | m | d | 1 | x\r\nbad \xFF\n"
                                        "42|jaw|9|0||d");
    EXPECT_EQ(withVersion(index, 5, 10), index.substr(0, index.size() - 6) + "10|0||d");
}

TEST(IndexEdit, appendsALine)
{
    EXPECT_EQ(withLine("a\n", "b"), "a\nb\n");
    EXPECT_EQ(withLine("a", "b"), "a\nb\n");
}

TEST(IndexEdit, addsAHeadingToAnEmptyIndex)
{
    EXPECT_EQ(withLine("", "b"),
              "# The part library. One part a line; a line that starts with # is a comment.\n"
              "# number | name | version | NC path | machine definition | description\n"
              "b\n");
}

TEST(IndexEdit, formatsALineThatParsesBack)
{
    LibraryItem plate = item(43, L"plate");
    plate.description = L"From C:\\plate.mcam";
    EXPECT_EQ(indexLine(plate), L"43 | plate | 1 | 0 |  | From C:\\plate.mcam");
    const LibraryIndex index = readLibraryIndex(indexLine(plate));
    ASSERT_EQ(index.items.size(), 1u);
    EXPECT_EQ(index.items[0].machine, L"");
    EXPECT_EQ(index.items[0].description, L"From C:\\plate.mcam");
}

TEST(PartOfCommit, isThePartOfTheWorkingCopy)
{
    EXPECT_EQ(partOf(17, L"C:\\work\\bracket.mcam"), 17);
    EXPECT_EQ(partOf(4294967295, L"c:\\WORK\\Clamp Jaw.MCAM"), 42);
    EXPECT_EQ(partOf(0, L"C:\\work\\bracket.mcam"), 17);
}

TEST(PartOfCommit, prefersTheWorkingCopyToTheId)
{
    EXPECT_EQ(partOf(17, L"C:\\work\\clamp jaw.mcam"), 42);
}

TEST(PartOfCommit, isThePartSentWithTheId)
{
    EXPECT_EQ(partOf(17, L"D:\\elsewhere.mcam"), 17);
    EXPECT_EQ(partOf(107, L"D:\\elsewhere.mcam"), 42);
    EXPECT_EQ(partOf(4294967289, L"D:\\elsewhere.mcam"), 42); // -7 as an unsigned id
}

TEST(PartOfCommit, isThePartWithTheIdAsNumber)
{
    EXPECT_EQ(partOf(42, L"D:\\elsewhere.mcam"), 42);
}

TEST(PartOfCommit, isNewForIdsWithoutMeaning)
{
    for (const std::uint32_t id : {0u, 4294967295u, 55u, 43u, 1000u})
        EXPECT_EQ(partOf(id, L"D:\\elsewhere.mcam"), std::nullopt) << id;
    EXPECT_EQ(partOf(0, L"C:\\gone.mcam"), std::nullopt);
}

TEST(WorkingCopies, areOneLineEach)
{
    EXPECT_EQ(workingCopiesText(copies()), L"17 | 17 | C:\\work\\bracket.mcam\n"
                                           L"107 | 42 | C:\\work\\clamp jaw.mcam\n"
                                           L"-7 | 42 | \n"
                                           L"55 | 0 | \n"
                                           L"- | 43 | C:\\gone.mcam\n");
}

TEST(WorkingCopies, ignoreOtherLines)
{
    const WorkingCopies read =
        readWorkingCopies(L"# none\n\n17 | 17\nx | 17 | C:\\a\n17 | -1 | C:\\a\n"
                          L"17 | 17 | C:\\a b | c");
    EXPECT_EQ(workingCopiesText(read), L"17 | 17 | C:\\a b | c\n");
}

TEST(WorkingCopies, loseTheirPathOrIdToALaterOne)
{
    WorkingCopies noted = copies();
    noteWorkingCopy(noted, {17, 42, L"C:\\Work\\Clamp Jaw.mcam"});
    EXPECT_EQ(workingCopiesText(noted), L"- | 17 | C:\\work\\bracket.mcam\n"
                                        L"107 | 42 | \n"
                                        L"-7 | 42 | \n"
                                        L"55 | 0 | \n"
                                        L"- | 43 | C:\\gone.mcam\n"
                                        L"17 | 42 | C:\\Work\\Clamp Jaw.mcam\n");
    noteWorkingCopy(noted, {-7, 17, L"C:\\gone.mcam"});
    EXPECT_EQ(noted.size(), 5u);
}

TEST(WorkingCopies, keepTheNewestThousand)
{
    WorkingCopies noted;
    for (std::int32_t id = 1; id <= 1001; ++id)
        noteWorkingCopy(noted, {id, 17, L""});
    EXPECT_EQ(noted.size(), 1000u);
    EXPECT_EQ(noted.front().id, 2);
}

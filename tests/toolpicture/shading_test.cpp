#include "toolpicture/shading.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

using namespace torvapdm;

namespace torvapdm {

bool operator==(const BodyRun& a, const BodyRun& b)
{
    return a.boundary == b.boundary && a.top == b.top && a.bottom == b.bottom;
}

void PrintTo(const BodyRun& run, std::ostream* out)
{
    *out << "column " << run.boundary << ", rows " << run.top << " to " << run.bottom - 1;
}

} // namespace torvapdm

namespace {

// Rows of a surface; '#' is the outline.
using Rows = std::vector<std::string>;

std::optional<BodyRun> findIn(const Rows& rows, int top, PictureSize picture,
                              const SectionMarks& marks = {90, 91, 92})
{
    const auto isOutline = [&](int x, int y) {
        if (x < 0 || y < 0 || y >= static_cast<int>(rows.size()))
            return false;
        const std::string& row = rows[static_cast<size_t>(y)];
        return x < static_cast<int>(row.size()) && row[static_cast<size_t>(x)] == '#';
    };
    return findBodyRun(isOutline, top, picture, marks);
}

constexpr SectionMarks marks = {5, 20, 30};

} // namespace

TEST(BodyRun, beginsInTheFirstColumnOfTheOutline)
{
    EXPECT_EQ(findIn({"..##.#.."}, 0, {12, 1}), (BodyRun{2, 0, 1}));
    EXPECT_EQ(findIn({"#......."}, 0, {12, 1}), (BodyRun{0, 0, 1}));
}

TEST(BodyRun, isOnlySearchedLeftOfTheCentre)
{
    EXPECT_EQ(findIn({".....#......"}, 0, {12, 1}), (BodyRun{5, 0, 1}));
    EXPECT_EQ(findIn({"......#....."}, 0, {12, 1}), std::nullopt);
    EXPECT_EQ(findIn({"......#....."}, 0, {13, 1}), std::nullopt);
    EXPECT_EQ(findIn({"......#....."}, 0, {14, 1}), (BodyRun{6, 0, 1}));
    EXPECT_EQ(findIn({"............"}, 0, {12, 1}), std::nullopt);
    EXPECT_EQ(findIn({"#"}, 0, {1, 1}), std::nullopt);
}

TEST(BodyRun, continuesInItsColumn)
{
    const Rows rows = {"..#.....", "..#.....", "..###...", ".##.....", ".#......"};
    EXPECT_EQ(findIn(rows, 0, {12, 5}), (BodyRun{2, 0, 3}));
    EXPECT_EQ(findIn(rows, 1, {12, 5}), (BodyRun{2, 1, 3}));
    EXPECT_EQ(findIn(rows, 3, {12, 5}), (BodyRun{1, 3, 5}));
}

TEST(BodyRun, endsWithThePicture)
{
    const Rows rows(8, "#");
    EXPECT_EQ(findIn(rows, 0, {12, 5}), (BodyRun{0, 0, 5}));
    EXPECT_EQ(findIn(rows, 4, {12, 5}), (BodyRun{0, 4, 5}));
}

TEST(BodyRun, looksOnlyOneColumnAhead)
{
    // Row 1 also has an outline pixel two columns to the left, which does not end the run.
    EXPECT_EQ(findIn({"...#....", ".#.#....", ".#......"}, 0, {12, 3}), (BodyRun{3, 0, 2}));
}

TEST(BodyRun, isCutAtTheMarks)
{
    const Rows rows(40, ".#");
    EXPECT_EQ(findIn(rows, 0, {12, 40}, marks), (BodyRun{1, 0, 6}));
    EXPECT_EQ(findIn(rows, 6, {12, 40}, marks), (BodyRun{1, 6, 21}));
    EXPECT_EQ(findIn(rows, 21, {12, 40}, marks), (BodyRun{1, 21, 31}));
    EXPECT_EQ(findIn(rows, 31, {12, 40}, marks), (BodyRun{1, 31, 40}));
}

TEST(Marks, cutOneRowBelowTheFirst)
{
    EXPECT_EQ(cutAtMark(0, 40, marks), 6);
    EXPECT_EQ(cutAtMark(5, 40, marks), 6); // a run that starts at a mark has one row
    EXPECT_EQ(cutAtMark(6, 40, marks), 21);
    EXPECT_EQ(cutAtMark(6, 20, marks), 20);
    EXPECT_EQ(cutAtMark(6, 21, marks), 21);
    EXPECT_EQ(cutAtMark(21, 40, marks), 31);
    EXPECT_EQ(cutAtMark(31, 40, marks), 40);
    EXPECT_EQ(cutAtMark(0, 40, {5, 5, 5}), 6);
}

TEST(Section, hasTheColourOfItsFirstRow)
{
    EXPECT_EQ(sectionColour(0, marks), 0x080808u);
    EXPECT_EQ(sectionColour(5, marks), 0x080808u);
    EXPECT_EQ(sectionColour(6, marks), 0x008080u);
    EXPECT_EQ(sectionColour(19, marks), 0x008080u);
    EXPECT_EQ(sectionColour(20, marks), 0x108010u);
    EXPECT_EQ(sectionColour(29, marks), 0x108010u);
    EXPECT_EQ(sectionColour(30, marks), 0x801010u);
    EXPECT_EQ(sectionColour(999, marks), 0x801010u);
}

TEST(BodyColour, lightensTowardsTheCentre)
{
    const auto columnsOf = [](Colour section) {
        std::vector<Colour> columns;
        for (int t = 0; t <= 8; ++t)
            columns.push_back(bodyColour(section, t, 8));
        return columns;
    };
    using Colours = std::vector<Colour>;
    EXPECT_EQ(columnsOf(capColour), (Colours{0x080808, 0x232323, 0x3E3E3E, 0x595959, 0x6F6F6F,
                                             0x818181, 0x8F8F8F, 0x979797, 0x9C9C9C}));
    EXPECT_EQ(columnsOf(shankColour), (Colours{0x007E80, 0x00A8AA, 0x00D1D4, 0x00FBFE, 0x22FBFD,
                                               0x3CFBFD, 0x54FBFD, 0x5DFCFE, 0x65FCFE}));
    EXPECT_EQ(columnsOf(shoulderColour), (Colours{0x107F10, 0x14A314, 0x19C619, 0x24E324, 0x41E641,
                                                  0x58E958, 0x6CEB6C, 0x76ED76, 0x7CED7C}));
    EXPECT_EQ(columnsOf(fluteColour), (Colours{0x7F1010, 0xA31414, 0xC61919, 0xE32424, 0xE64141,
                                               0xE95858, 0xEB6C6C, 0xED7676, 0xED7C7C}));
}

TEST(BodyColour, isDarkThenLightestInOneColumn)
{
    EXPECT_EQ(bodyColour(fluteColour, 0, 1), 0x7F1010u);
    EXPECT_EQ(bodyColour(fluteColour, 1, 1), 0xED7C7Cu);
}

TEST(BoundaryTable, isReadInGroupsOfEqualRows)
{
    const auto sp = std::make_unique<BoundaryTable>();
    sp->fill(9);
    (*sp)[2] = 4;
    (*sp)[3] = 4;
    EXPECT_EQ(endOfEqualRows(*sp, 0, 4096), 2);
    EXPECT_EQ(endOfEqualRows(*sp, 2, 4096), 4);
    EXPECT_EQ(endOfEqualRows(*sp, 3, 4096), 4);
    EXPECT_EQ(endOfEqualRows(*sp, 4, 10), 10);
    EXPECT_EQ(endOfEqualRows(*sp, 4, 4096), 4096);
    EXPECT_EQ(endOfEqualRows(*sp, 4095, 4096), 4096);
}

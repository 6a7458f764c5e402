#include "toolpicture/picture.h"

#include "framework/framework.h"
#include "support/bytes.h"
#include "support/counts.h"
#include "support/installation.h"
#include "support/raster.h"
#include "support/special_numbers.h"
#include "support/system_calls.h"
#include "toolpicture/reference_picture.h"
#include "toolpicture/geometry.h"
#include "companion/installation.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>

using namespace torvapdm;
using namespace testing_support;

namespace {

// Diameter, corner radius, tip angle; flute, shoulder and overall length; shank diameter.
using Lengths = std::array<double, 7>;

const Lengths lengths[] = {
    {10, 2, 0, 20, 30, 60, 8},        {10, 3, 12, 25, 25, 60, 20}, {16, 5, 90, 30, 45, 80, 16},
    {6, 40, 30, 12, 20, 50, 12},      {30, -6, 5, 8, 14, 70, 16},  {40, 9, 45, 45, 45, 60, 22},
    {0.5, 0.1, 0, 20, 40, 90, 6},     {12, 4, 100, 0, 0, 0, 0},    {5, 1, 0, -1, 10, 20.2, 5},
    {120, 60, 20, 300, 300, 500, 90},
};

const PictureSize sizes[] = {{24, 40},   {40, 24},   {11, 70},   {64, 64},
                             {100, 200}, {200, 100}, {201, 133}, {150, 151}};

ToolArguments toolOf(std::uint32_t toolType, const Lengths& l, PictureSize size = {100, 200})
{
    return {static_cast<std::uint32_t>(size.width),
            static_cast<std::uint32_t>(size.height),
            toolType,
            l[0],
            l[1],
            l[2],
            l[3],
            l[4],
            l[5],
            l[6]};
}

std::vector<PictureSize> surfaces;
int lines = 0;
std::vector<int> linesBeforeFlush;
std::vector<COLORREF> fillColours;
std::vector<RECT> fills;

HBITMAP WINAPI notedSurface(HDC screen, int width, int height)
{
    surfaces.push_back({width, height});
    return systems(&CreateCompatibleBitmap, "CreateCompatibleBitmap", L"gdi32.dll")(screen, width,
                                                                                    height);
}

BOOL WINAPI notedLine(HDC context, int x, int y)
{
    ++lines;
    return systems(&LineTo, "LineTo", L"gdi32.dll")(context, x, y);
}

BOOL WINAPI notedFlush()
{
    linesBeforeFlush.push_back(lines);
    return systems(&GdiFlush, "GdiFlush", L"gdi32.dll")();
}

COLORREF WINAPI notedFillColour(HDC context, COLORREF colour)
{
    fillColours.push_back(colour);
    return systems(&SetBkColor, "SetBkColor", L"gdi32.dll")(context, colour);
}

BOOL WINAPI notedFill(HDC context, int x, int y, UINT options, const RECT* area, LPCWSTR text,
                      UINT length, const INT* distances)
{
    fills.push_back(*area);
    return systems(&ExtTextOutW, "ExtTextOutW", L"gdi32.dll")(context, x, y, options, area, text,
                                                              length, distances);
}

class ToolPicture : public ::testing::Test {
protected:
    std::wstring path(int imageId) const
    {
        return installation.path(L"temp\\toolimage-" + std::to_wstring(imageId) + L".bmp");
    }
    std::string bytes(int imageId) const { return readBytes(path(imageId)).value_or("none"); }

    // The picture drawn by the add-in, or an empty raster.
    Raster drawn(const ToolArguments& tool) const
    {
        constexpr int imageId = 1;
        DeleteFileW(path(imageId).c_str());
        drawTool(tool, imageId);
        return readBitmapFile(bytes(imageId)).value_or(Raster());
    }
    // Expects that an existing picture file remains unchanged.
    void expectNoPicture(const ToolArguments& tool) const
    {
        constexpr int imageId = 2;
        writeBytes(path(imageId), "earlier");
        drawTool(tool, imageId);
        EXPECT_EQ(bytes(imageId).substr(0, 10), "earlier")
            << tool.width << " x " << tool.height << ", kind " << tool.toolType;
    }

    const Installation installation;
    const ToolArguments endMill = toolOf(7, {10, 0, 0, 20, 30, 60, 8});
};

constexpr std::uint32_t kinds = 17; // 0, 15 and 16 are unknown

std::vector<std::uint32_t> rowOf(const Raster& picture, int y, int columns)
{
    std::vector<std::uint32_t> row;
    for (int x = 0; x < columns; ++x)
        row.push_back(picture.at(x, y));
    return row;
}

// A range of identical rows, and the pixels of their left half including the centre column.
struct GoldenRows {
    int first;
    int last;
    std::vector<std::uint32_t> pixels;
};

// An end mill of 24 x 40 pixels at 1.8 units per pixel: 6 rows of cap, 10 of shank, 6 of shoulder,
// 3 of flutes, then background.
const GoldenRows goldenEndMill[] = {
    {0,
     0,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0x080808, 0x282828, 0x484848, 0x636363,
      0x797979, 0x8D8D8D, 0x979797, 0x9C9C9C}},
    {1,
     1,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0x080808, 0x2D2D2D, 0x4F4F4F,
      0x6F6F6F, 0x858585, 0x949494, 0x9C9C9C}},
    {2,
     2,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0x080808, 0x343434,
      0x5E5E5E, 0x7E7E7E, 0x949494, 0x9C9C9C}},
    {3,
     3,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0xE3AC42, 0x080808,
      0x3E3E3E, 0x6F6F6F, 0x8F8F8F, 0x9C9C9C}},
    {4,
     4,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0xE3AC42, 0xE2AF4D,
      0x080808, 0x4F4F4F, 0x858585, 0x9C9C9C}},
    {5,
     5,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0xE3AC42, 0xE2AF4D,
      0xE2B257, 0x080808, 0x6F6F6F, 0x9C9C9C}},
    {6,
     15,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0xE3AC42, 0xE2AF4D,
      0xE2B257, 0x007E80, 0x22FBFD, 0x65FCFE}},
    {16,
     21,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0x107F10, 0x17B817,
      0x2BE42B, 0x55E855, 0x73EC73, 0x7CED7C}},
    {22,
     24,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0x7F1010, 0xB81717,
      0xE42B2B, 0xE85555, 0xEC7373, 0xED7C7C}},
    {25,
     39,
     {0xD7920E, 0xDC9711, 0xE49D13, 0xE8A119, 0xE7A422, 0xE5A72E, 0xE4AA39, 0xE3AC42, 0xE2AF4D,
      0xE2B257, 0xE1B560, 0xE1B86A, 0xE2BC73}},
};

// The section of a 0x00BBGGRR pixel, determined by comparing its components: `c` cap, `s` shank,
// `h` shoulder, `f` flutes, `.` background.
char sectionOf(std::uint32_t pixel)
{
    const int red = pixel & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel >> 16 & 0xFF;
    if (red == green && green == blue)
        return 'c';
    if (blue < red && blue < green)
        return 's';
    if (green > red && green > blue)
        return 'h';
    return red == green ? 'f' : '.';
}

// The sections of the left half including the centre column, one string per run of equal rows,
// prefixed with the number of rows.
std::vector<std::string> shapeOf(const Raster& picture)
{
    std::vector<std::string> rows;
    std::string last;
    int alike = 0;
    for (int y = 0; y <= picture.height; ++y) {
        std::string row;
        for (int x = 0; y < picture.height && x <= picture.width / 2; ++x)
            row += sectionOf(picture.at(x, y));
        if (row != last && alike != 0)
            rows.push_back((alike < 10 ? " " : "") + std::to_string(alike) + " " + last);
        alike = row == last ? alike + 1 : 1;
        last = row;
    }
    return rows;
}

struct GoldenShape {
    const char* what;
    ToolArguments tool;
    std::vector<std::string> rows;
};

const GoldenShape goldenShapes[] = {
    {"a ball mill",
     {31, 41, 1, 20, 0, 0, 15, 22, 40, 12},
     {
         " 1 .....ccccccccccc",
         " 1 ......cccccccccc",
         " 1 .......ccccccccc",
         " 1 ........cccccccc",
         " 1 .........ccccccc",
         " 1 ..........cccccc",
         "11 ...........sssss",
         " 6 ........hhhhhhhh",
         " 3 ........ffffffff",
         " 2 .........fffffff",
         " 1 ..........ffffff",
         " 1 ...........fffff",
         " 1 .............fff",
         "10 ................",
     }},
    {"a bull nose",
     {33, 45, 2, 20, 5, 0, 15, 22, 40, 12},
     {
         " 1 .....cccccccccccc",
         " 1 ......ccccccccccc",
         " 1 .......cccccccccc",
         " 1 ........ccccccccc",
         " 1 .........cccccccc",
         " 1 ..........ccccccc",
         "12 ............sssss",
         " 6 .........hhhhhhhh",
         " 7 .........ffffffff",
         " 1 ..........fffffff",
         " 1 ...........ffffff",
         " 1 ............fffff",
         "11 .................",
     }},
    {"a reversed corner",
     {33, 45, 14, 24, 10, 0, 15, 22, 34, 12},
     {
         " 1 .....cccccccccccc",
         " 1 ......ccccccccccc",
         " 1 .......cccccccccc",
         " 1 ........ccccccccc",
         " 1 .........cccccccc",
         " 1 ..........ccccccc",
         " 9 ...........ssssss",
         " 7 ......hhhhhhhhhhh",
         " 3 ......fffffffffff",
         " 1 ........fffffffff",
         " 1 .........ffffffff",
         " 1 ..........fffffff",
         " 1 ...........ffffff",
         " 1 ............fffff",
         " 2 .............ffff",
         " 1 ..............fff",
         "12 .................",
     }},
    {"a drill",
     {29, 43, 4, 16, 0, 118, 18, 24, 36, 12},
     {
         " 1 .....cccccccccc",
         " 1 ......ccccccccc",
         " 1 .......cccccccc",
         " 1 ........ccccccc",
         " 1 .........cccccc",
         " 1 ..........ccccc",
         " 6 ...........ssss",
         " 4 .........hhhhhh",
         "11 .........ffffff",
         " 1 ..........fffff",
         " 1 ............fff",
         "14 ...............",
     }},
    {"a tapered tool with a rounded corner",
     {37, 45, 3, 12, 4, 10, 20, 20, 40, 10},
     {
         " 1 ......ccccccccccccc",
         " 1 .......cccccccccccc",
         " 1 ........ccccccccccc",
         " 1 .........cccccccccc",
         " 1 ..........ccccccccc",
         " 1 ...........cccccccc",
         "16 ..............sssss",
         " 3 ..........fffffffff",
         " 4 ...........ffffffff",
         " 4 ............fffffff",
         " 3 .............ffffff",
         " 1 ..............fffff",
         " 1 ...............ffff",
         " 7 ...................",
     }},
};

BOOL WINAPI failingBitBlt(HDC, int, int, int, int, HDC, int, int, DWORD)
{
    return FALSE;
}

int lightnessOf(std::uint32_t pixel)
{
    const int parts[] = {static_cast<int>(pixel & 0xFF), static_cast<int>(pixel >> 8 & 0xFF),
                         static_cast<int>(pixel >> 16)};
    return *std::ranges::max_element(parts) + *std::ranges::min_element(parts);
}

} // namespace

TEST_F(ToolPicture, isCutFromASurfaceTwiceItsSize)
{
    redirectCalls(&CreateCompatibleBitmap, "CreateCompatibleBitmap", &notedSurface, L"gdi32.dll");
    drawTool(toolOf(10, lengths[0], {24, 40}), 1);
    ASSERT_EQ(surfaces.size(), 2u);
    EXPECT_EQ(surfaces[0].width, 48);
    EXPECT_EQ(surfaces[0].height, 80);
    EXPECT_EQ(surfaces[1].width, 24);
    EXPECT_EQ(surfaces[1].height, 40);
}

TEST_F(ToolPicture, isFlushedOnceAfterItsOutline)
{
    redirectCalls(&LineTo, "LineTo", &notedLine, L"gdi32.dll");
    redirectCalls(&GdiFlush, "GdiFlush", &notedFlush, L"gdi32.dll");
    drawTool(toolOf(10, lengths[0], {24, 40}), 1);
    EXPECT_GT(lines, 0);
    EXPECT_EQ(linesBeforeFlush, std::vector<int>{lines});
}

TEST_F(ToolPicture, isFilledFirstAndMirrorsARowBelow)
{
    redirectCalls(&SetBkColor, "SetBkColor", &notedFillColour, L"gdi32.dll");
    redirectCalls(&ExtTextOutW, "ExtTextOutW", &notedFill, L"gdi32.dll");
    drawTool(toolOf(10, lengths[0], {24, 40}), 1);
    ASSERT_FALSE(fills.empty());
    EXPECT_EQ(fillColours[0], 0xFFFFFFFFu);
    const RECT whole = {0, 0, 24, 40};
    EXPECT_TRUE(EqualRect(&fills[0], &whole));
    // A pixel in the row below the picture for each of 12 columns.
    EXPECT_EQ(std::ranges::count(fills, 41, &RECT::bottom), 12);
}

// Each kind in each size and with each tool, but only every third tool in one size: Windows takes
// its time for each picture.
TEST_F(ToolPicture, isRightPixelByPixel)
{
    for (std::uint32_t toolType = 0; toolType < kinds; ++toolType)
        for (size_t size = 0; size < std::size(sizes); ++size)
            for (size_t i = (toolType + size) % 3; i < std::size(lengths); i += 3) {
                const ToolArguments tool = toolOf(toolType, lengths[i], sizes[size]);
                EXPECT_EQ(differences(reference::toolPicture(tool), drawn(tool)), "")
                    << "kind " << toolType << ", " << sizes[size].width << " x "
                    << sizes[size].height << ", tool " << i;
            }
}

TEST_F(ToolPicture, hasAMirroredRightHalf)
{
    for (std::uint32_t toolType = 0; toolType < kinds; ++toolType)
        for (const PictureSize size : {PictureSize{100, 200}, PictureSize{101, 200}}) {
            const Raster picture = drawn(toolOf(toolType, lengths[0], size));
            ASSERT_EQ(picture.width, size.width);
            const int centre = size.width / 2;
            for (int y = 0; y < picture.height; ++y)
                for (int x = centre + 1; x < picture.width; ++x)
                    ASSERT_EQ(picture.at(x, y), picture.at(2 * centre + 1 - x, y))
                        << "kind " << toolType << ", column " << x << ", row " << y;
        }
}

TEST_F(ToolPicture, showsNothingOfItsOutline)
{
    for (std::uint32_t toolType = 0; toolType < kinds; ++toolType)
        for (const Lengths& l : lengths) {
            const Raster picture = drawn(toolOf(toolType, l));
            ASSERT_EQ(picture.pixels.size(), 20000u);
            EXPECT_EQ(std::ranges::count(picture.pixels, 0xFF00FFu), 0) << "kind " << toolType;
        }
}

TEST_F(ToolPicture, growsLighterTowardsTheCentre)
{
    for (std::uint32_t toolType = 0; toolType < kinds; ++toolType) {
        const Raster picture = drawn(toolOf(toolType, lengths[0]));
        ASSERT_EQ(picture.height, 200);
        for (int x = 1; x <= 50; ++x)
            EXPECT_GE(lightnessOf(picture.at(x, 199)), lightnessOf(picture.at(x - 1, 199)))
                << "kind " << toolType << ", column " << x;
        EXPECT_EQ(picture.at(0, 199), 0xD7920Eu);
    }
}

TEST_F(ToolPicture, hasThePixelsOfAnEndMill)
{
    const Raster picture = drawn(toolOf(7, {20, 0, 0, 10, 20, 40, 10}, {24, 40}));
    ASSERT_EQ(picture.width, 24);
    ASSERT_EQ(picture.height, 40);
    for (const GoldenRows& golden : goldenEndMill)
        for (int y = golden.first; y <= golden.last; ++y)
            EXPECT_EQ(rowOf(picture, y, 13), golden.pixels) << "row " << y;
}

TEST_F(ToolPicture, hasTheColoursOfEachShape)
{
    for (const GoldenShape& golden : goldenShapes) {
        const Raster picture = drawn(golden.tool);
        EXPECT_EQ(picture.width, static_cast<int>(golden.tool.width)) << golden.what;
        EXPECT_EQ(shapeOf(picture), golden.rows) << golden.what;
    }
}

TEST_F(ToolPicture, isRefusedWhenCuttingOutFails)
{
    redirectCalls(&BitBlt, "BitBlt", &failingBitBlt, L"gdi32.dll");
    expectNoPicture(endMill);
}

TEST_F(ToolPicture, repeatsItsRowsBetweenTheMarks)
{
    const Raster picture = drawn(endMill);
    ASSERT_EQ(picture.height, 200);
    // The cap has six different rows: one per step of its slope and one at the shank's edge. Shank,
    // shoulder, flutes and background have one each.
    std::set<std::vector<std::uint32_t>> rows;
    for (int y = 0; y < picture.height; ++y)
        rows.insert(rowOf(picture, y, picture.width));
    EXPECT_EQ(rows.size(), 10u);
}

TEST_F(ToolPicture, isBackgroundInOneAndFourPixels)
{
    const Raster one = drawn(toolOf(7, lengths[0], {1, 1}));
    EXPECT_EQ(one.pixels, std::vector<std::uint32_t>{0xD7920E});
    const Raster four = drawn(toolOf(7, lengths[0], {2, 2}));
    EXPECT_EQ(differences(reference::toolPicture(toolOf(7, lengths[0], {2, 2})), four), "");
    EXPECT_EQ(four.pixels.size(), 4u);
}

TEST_F(ToolPicture, hasAtMost4096Rows)
{
    const ToolArguments highest = toolOf(1, lengths[0], {30, 4096});
    EXPECT_EQ(differences(reference::toolPicture(highest), drawn(highest)), "");
    expectNoPicture(toolOf(1, lengths[0], {30, 4097}));
}

TEST_F(ToolPicture, mayExtendBeyondThePicture)
{
    const ToolArguments needle = toolOf(4, {0.01, 0, 0, 20, 40, 90, 0.02}, {40, 60});
    EXPECT_EQ(differences(reference::toolPicture(needle), drawn(needle)), "");
}

TEST_F(ToolPicture, isRefusedWithoutAPixel)
{
    expectNoPicture(toolOf(1, lengths[0], {0, 100}));
    expectNoPicture(toolOf(1, lengths[0], {100, 0}));
    expectNoPicture(toolOf(1, lengths[0], {0, 0}));
}

TEST_F(ToolPicture, isRefusedAboveABitmapsSize)
{
    ToolArguments tool = endMill;
    for (const std::uint32_t width :
         {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0x40000000u, 134217728u})
        for (const std::uint32_t height : {1u, 100u, 4096u, 0x80000000u, 0xFFFFFFFFu}) {
            EXPECT_FALSE(isPictureSize(width, height));
            tool.width = width;
            tool.height = height;
            expectNoPicture(tool);
        }
}

TEST_F(ToolPicture, isRefusedForAnInfiniteOrNaNLength)
{
    for (const double bad : {infinity, notANumber})
        for (const size_t i : {0u, 3u, 4u, 5u, 6u})
            for (const std::uint32_t toolType : {0u, 1u, 2u, 4u, 5u, 7u, 14u}) {
                Lengths l = lengths[0];
                l[i] = bad;
                expectNoPicture(toolOf(toolType, l));
            }
    Lengths l = lengths[0];
    l[1] = notANumber;
    for (const std::uint32_t toolType : {2u, 3u, 14u})
        expectNoPicture(toolOf(toolType, l));
}

TEST_F(ToolPicture, isRefusedForAnUndrawableCorner)
{
    // With a tip angle, the corner radius of kind 3 is not limited to half the diameter.
    for (const double radius : {1e5, 1e9, 1e300})
        expectNoPicture(toolOf(3, {2, radius, 0.01, 0.01, 0.01, 0.01, 2}));
}

TEST_F(ToolPicture, ignoresValuesItsKindDoesNotUse)
{
    const auto isLikeUsual = [&](std::uint32_t toolType, size_t argument, double odd,
                                 double angle = 0) {
        Lengths l = {10, 0, angle, 20, 30, 60, 8};
        const Raster usual = drawn(toolOf(toolType, l));
        l[argument] = odd;
        return usual.width == 100 && drawn(toolOf(toolType, l)).pixels == usual.pixels;
    };
    for (const double odd : {infinity, -infinity, notANumber, 1e300}) {
        EXPECT_TRUE(isLikeUsual(7, 1, odd)) << odd;
        EXPECT_TRUE(isLikeUsual(7, 2, odd)) << odd;
        for (const std::uint32_t pointed : {4u, 5u, 6u, 10u, 11u})
            for (const double angle : {0.0, 30.0})
                EXPECT_TRUE(isLikeUsual(pointed, 1, odd, angle)) << pointed << ", " << odd;
    }
    EXPECT_TRUE(isLikeUsual(6, 3, notANumber)); // kind 6 ignores the flute length
    EXPECT_TRUE(isLikeUsual(3, 4, notANumber)); // kind 3 ignores the shoulder length
}

TEST_F(ToolPicture, isNamedByItsNumber)
{
    EXPECT_EQ(toolPicturePath(-3), installation.path(L"temp\\toolimage--3.bmp"));
    EXPECT_EQ(toolPicturePath(0), installation.path(L"temp\\toolimage-0.bmp"));
    EXPECT_EQ(toolPicturePath(-2147483647 - 1),
              installation.path(L"temp\\toolimage--2147483648.bmp"));
    drawTool(endMill, -3);
    EXPECT_TRUE(readBitmapFile(bytes(-3)));
}

TEST_F(ToolPicture, replacesAnEarlierFile)
{
    drawTool(toolOf(1, lengths[0], {300, 400}), 5);
    drawTool(endMill, 5);
    const auto picture = readBitmapFile(bytes(5));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 100);
}

TEST_F(ToolPicture, isMissingQuietlyWithoutItsFolder)
{
    removeFolder(installation.path(L"temp"));
    drawTool(endMill, 5);
    EXPECT_EQ(readBytes(path(5)), std::nullopt);
}

TEST_F(ToolPicture, keepsNoGraphicsObject)
{
    drawTool(endMill, 1);
    const int before = countFreeGraphicsObjects();
    for (int i = 0; i < 1000; ++i)
        drawTool(toolOf(static_cast<std::uint32_t>(i % 16), lengths[0], {16, 24}), i);
    expectNoPicture(toolOf(1, lengths[0], {134217727, 1}));
    EXPECT_EQ(countFreeGraphicsObjects(), before);
    EXPECT_TRUE(readBitmapFile(bytes(999)));

    const HPEN held = CreatePen(PS_SOLID, 1, 0);
    EXPECT_EQ(countFreeGraphicsObjects(), before - 1);
    DeleteObject(held);
}

TEST_F(ToolPicture, isRightOrMissingWithoutResources)
{
    std::vector<HPEN> all;
    while (const HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3)))
        all.push_back(pen);
    writeBytes(path(1), "earlier");
    int free = 0;
    for (; bytes(1) == "earlier" && free < 20; ++free) {
        drawTool(endMill, 1);
        DeleteObject(all.back());
        all.pop_back();
    }
    for (const HPEN pen : all)
        DeleteObject(pen);
    EXPECT_GE(free, 5); // two bitmaps, two device contexts and a pen
    EXPECT_EQ(
        differences(reference::toolPicture(endMill), readBitmapFile(bytes(1)).value_or(Raster())),
        "");
}

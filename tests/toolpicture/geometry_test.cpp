#include "toolpicture/geometry.h"

#include "support/special_numbers.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

// A flat tool without a taper. The larger argument determines the scale.
ToolDimensions toolOf(double totalLength, double drawnWidth, double diameter = 10)
{
    ToolDimensions tool{};
    tool.diameter = diameter;
    tool.shankDiameter = drawnWidth;
    tool.overallLength = totalLength;
    tool.totalLength = totalLength;
    tool.drawnWidth = drawnWidth;
    return tool;
}

// The shank width of 200 fixes the scale at 0.216 units per pixel for lengths up to 200.
int capHalfOf(double totalLength)
{
    return toolGeometry(toolOf(totalLength, 200), {1000, 1000}).capHalf;
}

} // namespace

TEST(PictureSize, hasAtLeastAPixelAndAtMost4096Rows)
{
    EXPECT_TRUE(isPictureSize(1, 1));
    EXPECT_TRUE(isPictureSize(1, 4096));
    EXPECT_FALSE(isPictureSize(1, 4097));
    EXPECT_FALSE(isPictureSize(0, 10));
    EXPECT_FALSE(isPictureSize(10, 0));
    EXPECT_FALSE(isPictureSize(1, 0xFFFFFFFF));
}

TEST(PictureSize, hasAWorkSurfaceBelow2Gigabytes)
{
    EXPECT_TRUE(isPictureSize(134217727, 1));
    EXPECT_FALSE(isPictureSize(134217728, 1));
    EXPECT_TRUE(isPictureSize(32767, 4096));
    EXPECT_FALSE(isPictureSize(32768, 4096));
    EXPECT_FALSE(isPictureSize(0xFFFFFFFF, 1));
    EXPECT_FALSE(isPictureSize(0xFFFFFFFF, 0xFFFFFFFF));
}

TEST(ToolScale, leavesMoreRoomInAWidePicture)
{
    const ToolDimensions tool = toolOf(100, 20);
    EXPECT_DOUBLE_EQ(toolScale(tool, {200, 100}), 1.09);
    EXPECT_DOUBLE_EQ(toolScale(tool, {100, 200}), 1.08);
    EXPECT_DOUBLE_EQ(toolScale(tool, {100, 100}), 1.08);
    EXPECT_DOUBLE_EQ(toolScale(tool, {101, 100}), 1.09);
}

TEST(ToolScale, fitsTheToolsLongerSide)
{
    EXPECT_DOUBLE_EQ(toolScale(toolOf(100, 99), {100, 100}), 1.08);
    EXPECT_DOUBLE_EQ(toolScale(toolOf(100, 150), {100, 100}), 1.62);
}

TEST(ToolScale, usesAtMostAThousandPixels)
{
    const ToolDimensions tool = toolOf(100, 20);
    EXPECT_DOUBLE_EQ(toolScale(tool, {999, 999}), 0.108 * 1000 / 999);
    EXPECT_DOUBLE_EQ(toolScale(tool, {1000, 1000}), 0.108);
    EXPECT_DOUBLE_EQ(toolScale(tool, {1001, 1001}), 0.108);
    EXPECT_DOUBLE_EQ(toolScale(tool, {3000, 4000}), 0.108);
}

TEST(ToolScale, isOneForAToolWithoutExtent)
{
    const ToolDimensions tool = toolOf(0, 0, 10);
    EXPECT_DOUBLE_EQ(toolScale(tool, {100, 100}), 1.08);
    EXPECT_DOUBLE_EQ(toolScale(tool, {200, 100}), 1.09);
}

TEST(ToolScale, showsANeedleTwoPixelsWide)
{
    EXPECT_EQ(toolScale(toolOf(100, 20, 2.17), {100, 100}), 100.0 / 100 * 1.08);
    EXPECT_EQ(toolScale(toolOf(100, 20, 2.15), {100, 100}), 2.15 * 0.5);
    ToolDimensions tapered = toolOf(100, 20, 2);
    tapered.taper = 0.05;
    EXPECT_EQ(toolScale(tapered, {100, 100}), 1.05);
    tapered.taper = 0.09;
    EXPECT_EQ(toolScale(tapered, {100, 100}), 100.0 / 100 * 1.08);
}

TEST(ToolGeometry, truncatesHalfWidthsToPixels)
{
    ToolDimensions tool = toolOf(100, 20, 10);
    tool.taper = 3;
    tool.drawnWidth = 20;
    const ToolGeometry at = toolGeometry(tool, {100, 100});
    EXPECT_DOUBLE_EQ(at.scale, 1.08);
    EXPECT_EQ(at.diameterHalf, 4); // truncated from 4.63
    EXPECT_EQ(at.fluteHalf, 7);    // truncated from 7.41
    EXPECT_EQ(at.shankHalf, 9);    // truncated from 9.26
    EXPECT_EQ(toolGeometry(tool, {101, 100}).centreColumn, 50);
}

TEST(TipRow, isATwentiethBelowTheToolsLength)
{
    const ToolDimensions tool = toolOf(100, 20);
    EXPECT_EQ(toolGeometry(tool, {100, 219}).tipRow, 102); // 92.59 + 10, truncated
    EXPECT_EQ(toolGeometry(tool, {100, 220}).tipRow, 103);
    EXPECT_EQ(toolGeometry(tool, {100, 239}).tipRow, 103);
}

TEST(Cap, isHalfAsWideAsTheLength)
{
    // Width in units; half of it in pixels is width / 0.432.
    EXPECT_EQ(capHalfOf(0), 4);     // 2
    EXPECT_EQ(capHalfOf(4), 4);     // 2
    EXPECT_EQ(capHalfOf(5), 5);     // 2.5
    EXPECT_EQ(capHalfOf(20), 23);   // 10
    EXPECT_EQ(capHalfOf(20.2), 69); // 10.1, replaced by 30
    EXPECT_EQ(capHalfOf(59.8), 69); // 29.9, replaced by 30
    EXPECT_EQ(capHalfOf(60), 69);   // 30
    EXPECT_EQ(capHalfOf(62), 71);   // 31
    EXPECT_EQ(capHalfOf(100), 115);
}

TEST(Cap, endsFivePixelsInsideThePicture)
{
    EXPECT_EQ(toolGeometry(toolOf(20.2, 10), {100, 100}).capHalf, 45);
    EXPECT_EQ(toolGeometry(toolOf(1e-9, 1e-9, 1e-9), {101, 100}).capHalf, 45);
}

TEST(Cap, hasALowerBoundInANarrowPicture)
{
    // The upper bound is 10 / 2 - 5 = 0. A cap of 30 units is too wide for the picture and is cut
    // to 10 / 1.2 units; half of that is below the minimum of 2 pixels, which takes precedence.
    EXPECT_EQ(toolGeometry(toolOf(20.2, 10), {10, 10}).capHalf, 2);
    EXPECT_EQ(toolGeometry(toolOf(70, 10), {10, 10}).capHalf, 0);
    EXPECT_EQ(toolGeometry(toolOf(70, 70), {1, 100}).capHalf, 2);
}

TEST(Tool, isDrawableWhenItsNumbersAre)
{
    const ToolDimensions tool = toolOf(100, 20);
    EXPECT_TRUE(isDrawable(tool, 1));
    EXPECT_FALSE(isDrawable(tool, 0));
    EXPECT_FALSE(isDrawable(tool, infinity));
    EXPECT_FALSE(isDrawable(tool, std::nan("")));
    EXPECT_FALSE(isDrawable(toolOf(infinity, 20), 1));
}

#include "toolpicture/outline.h"

#include <gtest/gtest.h>
#include <string>

using namespace torvapdm;

namespace {

using Texts = std::vector<std::string>;

std::string textOf(PixelPoint point)
{
    return std::to_string(point.x) + "," + std::to_string(point.y);
}

std::string textOf(const OutlineMove& move)
{
    const std::string arc = textOf(move.boxTopLeft) + " " + textOf(move.boxBottomRight) + " from " +
                            textOf(move.start) + " to " + textOf(move.end);
    switch (move.kind) {
    case OutlineMove::Kind::moveTo:
        return "move " + textOf(move.to);
    case OutlineMove::Kind::lineTo:
        return "line " + textOf(move.to);
    case OutlineMove::Kind::arcTo:
        return "arc-to " + arc;
    case OutlineMove::Kind::arc:
        return "arc " + arc;
    }
    return "unknown";
}

Texts movesOf(const ToolDimensions& tool, const ToolGeometry& at)
{
    Texts texts;
    for (const OutlineMove& move : toolOutline(tool, at).moves)
        texts.push_back(textOf(move));
    return texts;
}

Texts operator+(Texts first, const Texts& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// The moves from index `beforeEnd` on, usually those after the shoulder.
Texts endOf(const ToolDimensions& tool, const ToolGeometry& at, size_t beforeEnd)
{
    const Texts all = movesOf(tool, at);
    return Texts(all.begin() + static_cast<std::ptrdiff_t>(beforeEnd), all.end());
}

// Two units per pixel, centre column 50, shank half-width 8, flute half-width 12, tip row 80.
const ToolGeometry geometry = {2.0, 50, 20, 8, 12, 12, 80};

ToolDimensions flatTool()
{
    ToolDimensions tool{};
    tool.diameter = 48;
    tool.fluteLength = 41;
    tool.shoulderLength = 61.9;
    tool.overallLength = 140.8;
    return tool;
}

const Texts cap = {"move 30,0", "line 35,5", "line 42,5"};
const Texts shank = {"line 42,44"};
const Texts shoulder = {"line 38,44", "line 38,54", "line 38,54"};
const size_t movesBeforeEnd = 7;

ToolDimensions toolWithCorner(double radius)
{
    ToolDimensions tool = flatTool();
    tool.radius = radius;
    return tool;
}

ToolDimensions taperedTool(double radius, double taper)
{
    ToolDimensions tool = toolWithCorner(radius);
    tool.angle = 40;
    tool.taper = taper;
    return tool;
}

} // namespace

TEST(Outline, runsFromTheCapToTheTip)
{
    EXPECT_EQ(movesOf(flatTool(), geometry),
              (cap + shank + shoulder + Texts{"line 38,80", "line 50,80"}));
}

TEST(Outline, marksTheRowsWhereSectionsEnd)
{
    const SectionMarks marks = toolOutline(flatTool(), geometry).marks;
    EXPECT_EQ(marks.cap, 5);
    EXPECT_EQ(marks.shank, 44);
    EXPECT_EQ(marks.shoulder, 54);
}

TEST(Outline, omitsAShankHiddenByTheShoulder)
{
    ToolDimensions tool = flatTool();
    tool.overallLength = tool.shoulderLength;
    EXPECT_EQ(movesOf(tool, geometry),
              (cap + Texts{"line 38,5", "line 38,15", "line 38,15", "line 38,80", "line 50,80"}));
    EXPECT_EQ(toolOutline(tool, geometry).marks.shank, 5);
    EXPECT_EQ(toolOutline(tool, geometry).marks.shoulder, 15);
}

TEST(Outline, omitsAShoulderHiddenByTheFlutes)
{
    ToolDimensions tool = flatTool();
    tool.shoulderLength = tool.fluteLength;
    EXPECT_EQ(movesOf(tool, geometry),
              (cap + Texts{"line 42,54", "line 38,54", "line 38,80", "line 50,80"}));
    EXPECT_EQ(toolOutline(tool, geometry).marks.shoulder, 54);
}

TEST(Outline, endsAPointedToolAtItsLength)
{
    ToolDimensions tool = flatTool();
    tool.isPointed = true;
    tool.pointLength = 21;
    tool.radius = 10;
    // 54 + 20.5 gives row 74, and 74 + 10.5 gives row 84; the tip row (80) is not used.
    EXPECT_EQ(endOf(tool, geometry, movesBeforeEnd),
              (Texts{"line 38,74", "line 50,84", "line 50,84"}));
}

TEST(Outline, endsFlatBelowACornerOfTwoPixels)
{
    const Texts flat = {"line 38,80", "line 50,80"};
    EXPECT_EQ(endOf(toolWithCorner(0), geometry, movesBeforeEnd), flat);
    EXPECT_EQ(endOf(toolWithCorner(3.99), geometry, movesBeforeEnd), flat);
    EXPECT_NE(endOf(toolWithCorner(4), geometry, movesBeforeEnd), flat);
}

TEST(Outline, keepsAFlatEndWithinThePicture)
{
    ToolGeometry at = geometry;
    at.diameterHalf = 51;
    EXPECT_EQ(endOf(flatTool(), at, movesBeforeEnd), (Texts{"line 0,80", "line 50,80"}));
    at.centreColumn = 40000;
    at.diameterHalf = 10;
    EXPECT_EQ(endOf(flatTool(), at, movesBeforeEnd), (Texts{"line 32767,80", "line 40000,80"}));
}

TEST(Outline, roundsACorner)
{
    EXPECT_EQ(endOf(toolWithCorner(11), geometry, movesBeforeEnd),
              (Texts{"line 38,76", "arc-to 38,71 48,81 from 38,76 to 43,81", "line 50,80"}));
}

TEST(Outline, hollowsAReversedCorner)
{
    ToolDimensions tool = toolWithCorner(11);
    tool.hasReversedCorner = true;
    EXPECT_EQ(
        endOf(tool, geometry, movesBeforeEnd),
        (Texts{"line 38,76", "arc 33,76 43,86 from 43,80 to 38,76", "move 43,80", "line 50,80"}));
}

TEST(Outline, roundsTheCornerOfATaperedTool)
{
    // The radius of 11 units is 5 pixels. The arc ends 5.5 x tan 25 = 2.56, truncated to 2, pixels
    // inside the diameter. It starts 2 x sin 40 outside the diameter and 2 x cos 40 above the tip.
    EXPECT_EQ(endOf(taperedTool(11, 10), geometry, movesBeforeEnd),
              (Texts{"arc-to 35,71 45,81 from 37,79 to 40,80", "line 50,80"}));
}

TEST(Outline, boundsATaperedCornerByItsTaper)
{
    // The maximum is 48 / (2 x tan 45) = 24 units, and 48 / (2 x tan 40) = 28.6 for taper 10.
    EXPECT_EQ(endOf(taperedTool(1000, 0.0011), geometry, movesBeforeEnd)[0],
              "arc-to 31,57 55,81 from 35,77 to 43,80");
    EXPECT_EQ(endOf(taperedTool(1000, 10), geometry, movesBeforeEnd)[0],
              "arc-to 30,53 58,81 from 35,76 to 44,80");
}

TEST(Outline, boundsNoCornerByATaperOf90)
{
    EXPECT_EQ(endOf(taperedTool(100, 90), geometry, movesBeforeEnd)[0],
              "arc-to 11,-19 111,81 from 24,63 to 61,80");
    EXPECT_EQ(endOf(taperedTool(100, 300), geometry, movesBeforeEnd)[0],
              "arc-to 11,-19 111,81 from 24,63 to 61,80");
}

TEST(Outline, ignoresATaperOfAThousandth)
{
    EXPECT_EQ(endOf(taperedTool(11, 0.001), geometry, movesBeforeEnd)[0], "line 38,76");
    EXPECT_NE(endOf(taperedTool(11, 0.0011), geometry, movesBeforeEnd)[0], "line 38,76");
}

TEST(Outline, ignoresATaperedReversedCorner)
{
    ToolDimensions tool = taperedTool(11, 10);
    tool.hasReversedCorner = true;
    EXPECT_EQ(endOf(tool, geometry, movesBeforeEnd),
              endOf(taperedTool(11, 10), geometry, movesBeforeEnd));
}

TEST(Outline, omitsATaperedArcWithoutAPixel)
{
    ToolDimensions tool = taperedTool(4, 10);
    tool.angle = 60; // 2 x tan 15 = 0.54 pixels
    EXPECT_EQ(endOf(tool, geometry, movesBeforeEnd), Texts{"line 50,80"});
}

TEST(Outline, canBeDrawnWithinTheCallsRange)
{
    ToolGeometry at = geometry;
    EXPECT_TRUE(canBeDrawn(toolOutline(flatTool(), at)));
    at.shankHalf = 134217727 + 49;
    EXPECT_TRUE(canBeDrawn(toolOutline(flatTool(), at)));
    at.shankHalf = 134217727 + 50;
    EXPECT_FALSE(canBeDrawn(toolOutline(flatTool(), at)));
    EXPECT_TRUE(canBeDrawn(toolOutline(toolWithCorner(32000), geometry)));
    EXPECT_FALSE(canBeDrawn(toolOutline(toolWithCorner(70000), geometry)));
}

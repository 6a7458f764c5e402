#include "toolpicture/dimensions.h"

#include "support/special_numbers.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

// A tool whose arguments the guards leave unchanged.
ToolArguments plainTool(std::uint32_t toolType = 7)
{
    return {100, 200, toolType, 10, 3, 20, 15, 25, 60, 8};
}

using Field = double ToolArguments::*;

ToolArguments with(Field field, double value, ToolArguments tool = plainTool())
{
    tool.*field = value;
    return tool;
}

ToolDimensions dimensionsOf(const ToolArguments& tool)
{
    return toolDimensions(guardedArguments(tool));
}

// An argument's value before and after its guard.
struct Guard {
    Field field;
    double value;
    double guarded;
};

const Guard guards[] = {
    {&ToolArguments::diameter, 0.001, 0.001},
    {&ToolArguments::diameter, 0, 1.0},
    {&ToolArguments::diameter, -5, 1.0},
    {&ToolArguments::diameter, -infinity, 1.0},
    {&ToolArguments::cornerRadius, -3, -3},
    {&ToolArguments::cornerRadius, 99, 99},
    {&ToolArguments::tipAngle, 0, 0},
    {&ToolArguments::tipAngle, 90, 90},
    {&ToolArguments::tipAngle, 90.001, 0},
    {&ToolArguments::tipAngle, 100, 0},
    {&ToolArguments::tipAngle, -0.001, 0},
    {&ToolArguments::tipAngle, infinity, 0},
    {&ToolArguments::tipAngle, notANumber, 0},
    {&ToolArguments::fluteLength, 0, 0},
    {&ToolArguments::fluteLength, -0.001, 2.0},
    {&ToolArguments::shoulderLength, 14.9, 15},
    {&ToolArguments::shoulderLength, 15.1, 15.1},
    {&ToolArguments::shoulderLength, -7, 15},
    {&ToolArguments::overallLength, 24.9, 25},
    {&ToolArguments::overallLength, 25.1, 25.1},
    {&ToolArguments::overallLength, -7, 25},
    {&ToolArguments::shankDiameter, 0, 10},
    {&ToolArguments::shankDiameter, -1, 10},
    {&ToolArguments::shankDiameter, 0.5, 0.5},
};

// Expected dimensions per kind for radius 3, angle 20, flute length 15 and shoulder length 25.
struct Kind {
    std::uint32_t toolType;
    bool isPointed;
    bool hasReversedCorner;
    double radius;
    double angle;
    double fluteLength;
    double shoulderLength;
};

const Kind kinds[] = {
    {0, false, false, 0, 0, 15, 25},
    {1, false, false, 5, 0, 15, 25},
    {2, false, false, 3, 0, 15, 25},
    {3, false, false, 3, 20, 15, 15},
    {4, true, false, 0, 20, 15, 25},
    {5, true, false, 0, 20, 15, 25},
    {6, true, false, 0, 20, 0, 25},
    {7, false, false, 0, 0, 15, 25},
    {8, false, false, 0, 0, 15, 25},
    {9, false, false, 0, 0, 15, 25},
    {10, true, false, 0, 20, 0, 25},
    {11, true, false, 0, 20, 0, 25},
    {12, false, false, 0, 0, 15, 25},
    {13, false, false, 0, 0, 15, 25},
    {14, false, true, 3, 20, 15, 25},
    {15, false, false, 0, 0, 15, 25},
    {4294967295u, false, false, 0, 0, 15, 25},
};

} // namespace

TEST(ToolArguments, areGuardedOneByOne)
{
    for (const Guard& guard : guards)
        EXPECT_EQ(guardedArguments(with(guard.field, guard.value)).*guard.field, guard.guarded)
            << "argument " << &guard - guards << ", value " << guard.value;
}

TEST(ToolArguments, areGuardedInTheirOrder)
{
    // Each guard uses the results of the previous guards.
    ToolArguments tool = plainTool();
    tool.diameter = -1;
    tool.fluteLength = -1;
    tool.shoulderLength = 1;
    tool.overallLength = 1.5;
    tool.shankDiameter = 0;
    tool = guardedArguments(tool);
    EXPECT_EQ(tool.shoulderLength, 2.0);
    EXPECT_EQ(tool.overallLength, 2.0);
    EXPECT_EQ(tool.shankDiameter, 1.0);
}

TEST(ToolArguments, keepTheirSizeAndTheirKind)
{
    const ToolArguments guarded = guardedArguments({0, 5000, 99, 1, 1, 1, 1, 1, 1, 1});
    EXPECT_EQ(guarded.width, 0u);
    EXPECT_EQ(guarded.height, 5000u);
    EXPECT_EQ(guarded.toolType, 99u);
}

TEST(ToolKind, decidesShapeCornerAndLengths)
{
    for (const Kind& kind : kinds) {
        const ToolDimensions tool = dimensionsOf(plainTool(kind.toolType));
        SCOPED_TRACE(kind.toolType);
        EXPECT_EQ(tool.isPointed, kind.isPointed);
        EXPECT_EQ(tool.hasReversedCorner, kind.hasReversedCorner);
        EXPECT_EQ(tool.radius, kind.radius);
        EXPECT_EQ(tool.angle, kind.angle);
        EXPECT_EQ(tool.fluteLength, kind.fluteLength);
        EXPECT_EQ(tool.shoulderLength, kind.shoulderLength);
        EXPECT_EQ(tool.overallLength, 60);
        EXPECT_EQ(tool.diameter, 10);
        EXPECT_EQ(tool.shankDiameter, 8);
    }
}

TEST(ToolKind, raisesTheOverallLengthAgain)
{
    // A shoulder length of NaN does not raise the overall length; kind 3 then replaces it by 15.
    ToolArguments tool = with(&ToolArguments::shoulderLength, notANumber, plainTool(3));
    tool.overallLength = 5;
    EXPECT_EQ(dimensionsOf(tool).overallLength, 15);
}

TEST(ToolKind, boundsTheCornerToHalfTheDiameter)
{
    const auto radiusOf = [](std::uint32_t toolType, double radius, double angle = 0) {
        ToolArguments tool = with(&ToolArguments::cornerRadius, radius, plainTool(toolType));
        tool.tipAngle = angle;
        return dimensionsOf(tool).radius;
    };
    EXPECT_EQ(radiusOf(2, 4.9), 4.9);
    EXPECT_EQ(radiusOf(2, 5.1), 5);
    EXPECT_EQ(radiusOf(14, 4.9), 4.9);
    EXPECT_EQ(radiusOf(14, 5.1), 5);
    EXPECT_EQ(radiusOf(3, 5.1, 0), 5);
    EXPECT_EQ(radiusOf(3, 5.1, 0.001), 5);
    EXPECT_EQ(radiusOf(3, 5.1, 0.0011), 5.1);
    EXPECT_EQ(radiusOf(3, -5.1, 0), 5);
}

TEST(ToolKind, reversesTheCornerOfANegativeRadius)
{
    for (const std::uint32_t toolType : {2u, 3u, 14u}) {
        const ToolDimensions tool =
            dimensionsOf(with(&ToolArguments::cornerRadius, -2, plainTool(toolType)));
        EXPECT_TRUE(tool.hasReversedCorner) << toolType;
        EXPECT_EQ(tool.radius, 2) << toolType;
    }
    EXPECT_FALSE(
        dimensionsOf(with(&ToolArguments::cornerRadius, -2, plainTool(1))).hasReversedCorner);
    EXPECT_FALSE(
        dimensionsOf(with(&ToolArguments::cornerRadius, 0, plainTool(14))).hasReversedCorner);
}

TEST(Point, hasHalfTheTipAngleOr59Degrees)
{
    EXPECT_EQ(halfAngleOfPoint(0), 59.0);
    EXPECT_EQ(halfAngleOfPoint(-1), 59.0);
    EXPECT_EQ(halfAngleOfPoint(0.5), 0.25);
    EXPECT_EQ(halfAngleOfPoint(90), 45);
    EXPECT_EQ(halfAngleOfPoint(179.9), 179.9 / 2);
    EXPECT_EQ(halfAngleOfPoint(180), 89.999);
    EXPECT_EQ(halfAngleOfPoint(360), 89.999);
}

TEST(Point, is118DegreesByDefault)
{
    for (const double angle : {0.0, 100.0, -5.0}) {
        const ToolDimensions drill =
            dimensionsOf(with(&ToolArguments::tipAngle, angle, plainTool(4)));
        EXPECT_NEAR(drill.pointLength, 5 * 0.6008606190, 1e-9) << angle; // tan 31
        EXPECT_EQ(drill.totalLength, 60 + drill.pointLength);
    }
}

TEST(Point, followsTheTipAngle)
{
    const auto pointOf = [](std::uint32_t toolType, double angle) {
        return dimensionsOf(with(&ToolArguments::tipAngle, angle, plainTool(toolType))).pointLength;
    };
    EXPECT_NEAR(pointOf(4, 90), 5, 1e-9);
    EXPECT_NEAR(pointOf(5, 60), 5 * std::sqrt(3), 1e-9);
    EXPECT_NEAR(pointOf(11, 90), 5, 1e-9);
    EXPECT_EQ(pointOf(7, 90), 0);
    EXPECT_EQ(pointOf(3, 60), 0);
}

TEST(Taper, widensTheFlutesOfAToolThatIsNotPointed)
{
    const auto of = [](std::uint32_t toolType, double angle) {
        return dimensionsOf(with(&ToolArguments::tipAngle, angle, plainTool(toolType)));
    };
    EXPECT_NEAR(of(3, 45).taper, 15, 1e-9);
    EXPECT_NEAR(of(3, 45).drawnWidth, 40, 1e-9);
    EXPECT_NEAR(of(14, 45).taper, 15, 1e-9);
    EXPECT_EQ(of(3, 0).taper, 0);
    EXPECT_EQ(of(4, 45).taper, 0);
    EXPECT_EQ(of(1, 45).taper, 0);
    EXPECT_GT(of(3, 90).taper, 1e15);
}

TEST(DrawnWidth, isTheWiderOfShankAndFlutes)
{
    EXPECT_EQ(dimensionsOf(plainTool()).drawnWidth, 10);
    EXPECT_EQ(dimensionsOf(with(&ToolArguments::shankDiameter, 10.5)).drawnWidth, 10.5);
}

TEST(ToolDimensions, areFiniteIfTheirLengthsAre)
{
    EXPECT_TRUE(areFinite(dimensionsOf(plainTool())));
    for (const double bad : {infinity, notANumber})
        for (const Field field :
             {&ToolArguments::diameter, &ToolArguments::fluteLength, &ToolArguments::shoulderLength,
              &ToolArguments::overallLength, &ToolArguments::shankDiameter})
            EXPECT_FALSE(areFinite(dimensionsOf(with(field, bad)))) << bad;
    EXPECT_TRUE(areFinite(dimensionsOf(with(&ToolArguments::cornerRadius, notANumber))));
    EXPECT_FALSE(
        areFinite(dimensionsOf(with(&ToolArguments::cornerRadius, notANumber, plainTool(2)))));
    EXPECT_FALSE(
        areFinite(dimensionsOf(with(&ToolArguments::cornerRadius, notANumber, plainTool(14)))));
    EXPECT_TRUE(areFinite(dimensionsOf(with(&ToolArguments::tipAngle, notANumber, plainTool(3)))));
}

TEST(ToolDimensions, areNotFiniteOnOverflow)
{
    ToolArguments tool = plainTool(3);
    tool.fluteLength = 1e308;
    tool.tipAngle = 80;
    EXPECT_FALSE(areFinite(dimensionsOf(tool)));
}

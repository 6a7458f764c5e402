#include "toolpicture/dimensions.h"

#include "toolpicture/numbers.h"

#include <algorithm>
#include <cmath>

namespace torvapdm {

namespace {

// Degrees; a smaller tip angle counts as 0.
constexpr double smallestAngle = 0.001;

ToolDimensions withoutKind(const ToolArguments& guarded)
{
    ToolDimensions tool{};
    tool.diameter = guarded.diameter;
    tool.radius = guarded.cornerRadius;
    tool.angle = guarded.tipAngle;
    tool.fluteLength = guarded.fluteLength;
    tool.shoulderLength = guarded.shoulderLength;
    tool.overallLength = guarded.overallLength;
    tool.shankDiameter = guarded.shankDiameter;
    return tool;
}

void makeBall(ToolDimensions& tool)
{
    tool.radius = tool.diameter / 2;
    tool.angle = 0;
}

void makeBullNose(ToolDimensions& tool)
{
    tool.radius = std::min(tool.radius, tool.diameter / 2);
    tool.angle = 0;
}

// A point has no corner, so the given radius is ignored, even when it is NaN.
void makePointed(ToolDimensions& tool)
{
    tool.isPointed = true;
    tool.radius = 0;
}

void makePointedWithoutFlutes(ToolDimensions& tool)
{
    makePointed(tool);
    tool.fluteLength = 0;
}

// Quirk Q25: the tip angle is kept, so this kind can have a taper, and is then drawn with a tapered
// tool's corner.
void makeReversedCorner(ToolDimensions& tool)
{
    tool.radius = -std::min(std::abs(tool.radius), tool.diameter / 2);
}

void makeFlat(ToolDimensions& tool)
{
    tool.radius = 0;
    tool.angle = 0;
}

void shapeByKind(std::uint32_t toolType, ToolDimensions& tool)
{
    switch (toolType) {
    case 1:
        return makeBall(tool);
    case 2:
        return makeBullNose(tool);
    case 3: // tapered, and without a shoulder
        tool.shoulderLength = tool.fluteLength;
        return;
    case 4:
    case 5:
        return makePointed(tool);
    case 6:
    case 10:
    case 11:
        return makePointedWithoutFlutes(tool);
    case 14:
        return makeReversedCorner(tool);
    default:
        return makeFlat(tool);
    }
}

void restoreOrder(ToolDimensions& tool)
{
    tool.shoulderLength = std::max(tool.shoulderLength, tool.fluteLength);
    tool.overallLength = std::max(tool.overallLength, tool.shoulderLength);
}

void settleRadius(ToolDimensions& tool)
{
    tool.hasReversedCorner = tool.radius < 0;
    tool.radius = std::abs(tool.radius);
    if (tool.angle <= smallestAngle && tool.radius > tool.diameter / 2)
        tool.radius = tool.diameter / 2;
}

void addPoint(ToolDimensions& tool)
{
    const double steepness = std::tan(radians(90 - halfAngleOfPoint(tool.angle)));
    tool.pointLength = tool.isPointed ? steepness * tool.diameter / 2 : 0;
    tool.totalLength = tool.overallLength + tool.pointLength;
}

void addTaper(ToolDimensions& tool)
{
    tool.taper = tool.isPointed ? 0 : std::tan(radians(tool.angle)) * tool.fluteLength;
    tool.drawnWidth = std::max(tool.shankDiameter, tool.diameter + 2 * tool.taper);
}

} // namespace

ToolArguments guardedArguments(ToolArguments arguments)
{
    if (arguments.diameter <= 0)
        arguments.diameter = 1.0;
    // Quirk Q23: an angle above 90 becomes 0, so a drill of 100 degrees gets a point of 118.
    if (!(arguments.tipAngle >= 0 && arguments.tipAngle <= 90))
        arguments.tipAngle = 0;
    if (arguments.fluteLength < 0)
        arguments.fluteLength = 2.0;
    arguments.shoulderLength = std::max(arguments.shoulderLength, arguments.fluteLength);
    arguments.overallLength = std::max(arguments.overallLength, arguments.shoulderLength);
    if (arguments.shankDiameter <= 0)
        arguments.shankDiameter = arguments.diameter;
    return arguments;
}

double halfAngleOfPoint(double tipAngle)
{
    if (tipAngle <= 0)
        return 59.0;
    // Quirk Q24: never true, since the guard has already replaced such an angle.
    if (tipAngle >= 180)
        return 89.999;
    return tipAngle / 2;
}

ToolDimensions toolDimensions(const ToolArguments& guarded)
{
    ToolDimensions tool = withoutKind(guarded);
    shapeByKind(guarded.toolType, tool);
    restoreOrder(tool);
    settleRadius(tool);
    addPoint(tool);
    addTaper(tool);
    return tool;
}

bool areFinite(const ToolDimensions& tool)
{
    const double all[] = {tool.diameter,      tool.radius,         tool.angle,
                          tool.fluteLength,   tool.shoulderLength, tool.overallLength,
                          tool.shankDiameter, tool.pointLength,    tool.totalLength,
                          tool.taper,         tool.drawnWidth};
    return std::ranges::all_of(all, [](double x) { return std::isfinite(x); });
}

} // namespace torvapdm

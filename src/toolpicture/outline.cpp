#include "toolpicture/outline.h"

#include "toolpicture/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace torvapdm {

namespace {

using Kind = OutlineMove::Kind;
using Moves = std::vector<OutlineMove>;

constexpr int capHeight = 5;

// In pixels; a smaller corner is not drawn.
constexpr double smallestRadius = 2;

// In the tool's unit; a taper up to this counts as none.
constexpr double smallestTaper = 0.001;

// Far larger than any picture. With larger coordinates, the graphics system's arcs can overflow and
// crash the process.
constexpr int farthestArc = 32767;

void moveTo(Moves& moves, int x, int y)
{
    moves.push_back({Kind::moveTo, {x, y}, {}, {}, {}, {}});
}

void lineTo(Moves& moves, int x, int y)
{
    moves.push_back({Kind::lineTo, {x, y}, {}, {}, {}, {}});
}

// Returns the row in which it ends.
int drawCap(Moves& moves, const ToolGeometry& at)
{
    const int left = at.centreColumn - at.capHalf;
    moveTo(moves, left, 0);
    lineTo(moves, left + capHeight, capHeight);
    lineTo(moves, at.centreColumn - at.shankHalf, capHeight);
    return capHeight;
}

// Each of the following starts in row y and returns the row in which it ends.

int drawShank(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at, int y)
{
    if (tool.overallLength <= tool.shoulderLength)
        return y;
    y += truncated((tool.overallLength - tool.shoulderLength) / at.scale);
    lineTo(moves, at.centreColumn - at.shankHalf, y);
    return y;
}

int drawShoulder(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at, int y)
{
    const int x = at.centreColumn - at.fluteHalf;
    if (tool.shoulderLength > tool.fluteLength) {
        lineTo(moves, x, y);
        y += truncated((tool.shoulderLength - tool.fluteLength) / at.scale);
        lineTo(moves, x, y);
    }
    lineTo(moves, x, y);
    return y;
}

int drawPoint(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at, int y)
{
    y = truncated(y + tool.fluteLength / at.scale);
    lineTo(moves, at.centreColumn - at.fluteHalf, y);
    const int tipRow = truncated(y + tool.pointLength / at.scale);
    lineTo(moves, at.centreColumn, tipRow);
    return tipRow;
}

void drawFlatEnd(Moves& moves, const ToolGeometry& at)
{
    const int x = clampInt(at.centreColumn - at.diameterHalf, 0, 32767);
    lineTo(moves, x, at.tipRow);
}

// Quirk Q29: the taper, a length, is used as an angle in degrees.
double taperFactor(double taper)
{
    return taper < 90 ? std::tan(radians(45 - taper / 2)) : 1e-7;
}

void drawTaperedCorner(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at)
{
    const double radius = std::min(tool.diameter / (2 * taperFactor(tool.taper)), tool.radius);
    const int arcWidth = truncated(std::tan(radians(45 - tool.angle / 2)) * radius / at.scale);
    // Quirk Q30: without an arc, the line to the tip's centre makes a cone of the end.
    if (arcWidth < 1)
        return;
    const int radiusInPixels = truncated(radius / at.scale);
    const int left = at.centreColumn - at.diameterHalf;
    const double angle = radians(tool.angle);
    const PixelPoint start = {left - truncated(arcWidth * std::sin(angle)),
                              at.tipRow - truncated(arcWidth * std::cos(angle))};
    const PixelPoint end = {left + arcWidth, at.tipRow};
    moves.push_back({Kind::arcTo,
                     {},
                     {end.x - radiusInPixels, at.tipRow - 2 * radiusInPixels + 1},
                     {end.x + radiusInPixels, at.tipRow + 1},
                     start,
                     end});
}

void drawReversedCorner(Moves& moves, int x, int y0, int r, int tipRow)
{
    moves.push_back({Kind::arc, {}, {x - r, y0}, {x + r, y0 + 2 * r}, {x + r, tipRow}, {x, y0}});
    moveTo(moves, x + r, tipRow);
}

void drawRoundCorner(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at)
{
    const int x = at.centreColumn - at.diameterHalf;
    const int r = truncated(tool.radius / at.scale);
    const int y0 = at.tipRow - r + 1;
    lineTo(moves, x, y0);
    if (tool.hasReversedCorner)
        return drawReversedCorner(moves, x, y0, r, at.tipRow);
    moves.push_back({Kind::arcTo, {}, {x, y0 - r}, {x + 2 * r, y0 + r}, {x, y0}, {x + r, y0 + r}});
}

void drawEnd(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at)
{
    if (tool.radius <= 0 || tool.radius / at.scale < smallestRadius)
        drawFlatEnd(moves, at);
    else if (tool.taper > smallestTaper)
        drawTaperedCorner(moves, tool, at);
    else
        drawRoundCorner(moves, tool, at);
}

// Returns the row of the tip.
int drawFlutesAndTip(Moves& moves, const ToolDimensions& tool, const ToolGeometry& at, int y)
{
    if (tool.isPointed)
        return drawPoint(moves, tool, at, y);
    drawEnd(moves, tool, at);
    return at.tipRow;
}

bool isNearer(const PixelPoint& point, int limit)
{
    return std::max(std::abs(point.x), std::abs(point.y)) < limit;
}

bool isDrawableMove(const OutlineMove& move)
{
    return isNearer(move.to, farthestPixel) && isNearer(move.start, farthestPixel) &&
           isNearer(move.end, farthestPixel) && isNearer(move.boxTopLeft, farthestArc) &&
           isNearer(move.boxBottomRight, farthestArc);
}

} // namespace

ToolOutline toolOutline(const ToolDimensions& tool, const ToolGeometry& geometry)
{
    ToolOutline outline{};
    Moves& moves = outline.moves;
    outline.marks.cap = drawCap(moves, geometry);
    outline.marks.shank = drawShank(moves, tool, geometry, outline.marks.cap);
    outline.marks.shoulder = drawShoulder(moves, tool, geometry, outline.marks.shank);
    const int tipRow = drawFlutesAndTip(moves, tool, geometry, outline.marks.shoulder);
    lineTo(moves, geometry.centreColumn, tipRow);
    return outline;
}

bool canBeDrawn(const ToolOutline& outline)
{
    return std::ranges::all_of(outline.moves, isDrawableMove);
}

} // namespace torvapdm

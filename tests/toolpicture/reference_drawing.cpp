#include "toolpicture/reference_drawing.h"

#include "toolpicture/reference_colours.h"

#include <algorithm>
#include <cmath>

namespace reference {

namespace {

constexpr double pi = 3.14159265358979323846;

double tangent(double degrees)
{
    return std::tan(degrees * pi / 180);
}

// Truncates and clamps to the coordinate range of GDI calls.
int trunc(double value)
{
    constexpr double farthest = 134217727;
    return static_cast<int>(std::trunc(std::min(std::max(value, -farthest), farthest)));
}

struct Tool {
    double diameter, radius, angle, flute, shoulder, overall, shank;
    bool isPointed, isReversed;
};

Tool guarded(const torvapdm::ToolArguments& a)
{
    Tool tool{};
    tool.diameter = a.diameter <= 0 ? 1.0 : a.diameter;
    tool.radius = a.cornerRadius;
    tool.angle = a.tipAngle >= 0 && a.tipAngle <= 90 ? a.tipAngle : 0;
    tool.flute = a.fluteLength < 0 ? 2.0 : a.fluteLength;
    tool.shoulder = std::max(a.shoulderLength, tool.flute);
    tool.overall = std::max(a.overallLength, tool.shoulder);
    tool.shank = a.shankDiameter <= 0 ? tool.diameter : a.shankDiameter;
    return tool;
}

void applyKind(Tool& tool, unsigned kind)
{
    const double half = tool.diameter / 2;
    const bool isDrill = kind == 4 || kind == 5;
    const bool isCone = kind == 6 || kind == 10 || kind == 11;
    if (kind == 1)
        tool.radius = half;
    else if (kind == 2)
        tool.radius = std::min(tool.radius, half);
    else if (kind == 14)
        tool.radius = -std::min(std::fabs(tool.radius), half);
    else if (kind != 3 && !isDrill && !isCone)
        tool.radius = 0;
    if (kind != 3 && kind != 14 && !isDrill && !isCone)
        tool.angle = 0;
    if (kind == 3)
        tool.shoulder = tool.flute;
    if (isCone)
        tool.flute = 0;
    tool.shoulder = std::max(tool.shoulder, tool.flute);
    tool.overall = std::max(tool.overall, tool.shoulder);
    tool.isPointed = isDrill || isCone;
    tool.isReversed = tool.radius < 0;
    tool.radius = std::fabs(tool.radius);
    if (tool.angle <= 0.001)
        tool.radius = std::min(tool.radius, half);
}

int clamped(int value, int low, int high)
{
    return value < low ? low : value > high ? high : value;
}

// The outline drawn so far, with the current row in `y`.
struct Pencil {
    Drawing drawing;
    Tool tool;
    double scale, taper, point, total;
    int cx, fluteHalf, diameterHalf, shankHalf, tipRow, y;

    void moveTo(int x, int row) { drawing.moves.push_back({0, x, row}); }
    void lineTo(int x, int row) { drawing.moves.push_back({1, x, row}); }
};

void settleLengths(Pencil& d, int width, int height)
{
    const Tool& tool = d.tool;
    const double halfAngle = tool.angle <= 0 ? 59.0 : tool.angle / 2;
    d.point = tool.isPointed ? tangent(90 - halfAngle) * tool.diameter / 2 : 0;
    d.total = tool.overall + d.point;
    d.taper = tool.isPointed ? 0 : tangent(tool.angle) * tool.flute;
    const double drawnWidth = std::max(tool.shank, tool.diameter + 2 * d.taper);
    d.scale = std::max(drawnWidth, d.total) / clamped(std::min(width, height), 1, 1000);
    if (d.scale <= 0)
        d.scale = 1;
    d.scale = d.scale * (width > height ? 1.09 : 1.08);
    const double half = tool.diameter * 0.5 + d.taper;
    if (half / d.scale < 1)
        d.scale = half;
    d.cx = width / 2;
    d.fluteHalf = trunc(half / d.scale);
    d.diameterHalf = trunc(tool.diameter * 0.5 / d.scale);
    d.shankHalf = trunc(tool.shank / (2 * d.scale));
    d.tipRow = trunc(d.total / d.scale + height / 20);
}

void drawCap(Pencil& d, int width)
{
    double v = std::max(d.total / 2, 2.0);
    if (v > 10 && v < 30)
        v = 30;
    if (v / d.scale * 1.2 > width)
        v = width / 1.2;
    const int half = clamped(trunc(v / (2 * d.scale)), 2, d.cx - 5);
    d.moveTo(d.cx - half, 0);
    d.lineTo(d.cx - half + 5, 5);
    d.lineTo(d.cx - d.shankHalf, 5);
    d.y = 5;
    d.drawing.marks.cap = 5;
}

void drawShankAndShoulder(Pencil& d)
{
    const Tool& tool = d.tool;
    if (tool.overall > tool.shoulder) {
        d.y += trunc((tool.overall - tool.shoulder) / d.scale);
        d.lineTo(d.cx - d.shankHalf, d.y);
    }
    d.drawing.marks.shank = d.y;
    if (tool.shoulder > tool.flute) {
        d.lineTo(d.cx - d.fluteHalf, d.y);
        d.y += trunc((tool.shoulder - tool.flute) / d.scale);
        d.lineTo(d.cx - d.fluteHalf, d.y);
    }
    d.drawing.marks.shoulder = d.y;
    d.lineTo(d.cx - d.fluteHalf, d.y);
}

void drawPoint(Pencil& d)
{
    d.y = trunc(d.y + d.tool.flute / d.scale);
    d.lineTo(d.cx - d.fluteHalf, d.y);
    d.tipRow = trunc(d.y + d.point / d.scale);
    d.lineTo(d.cx, d.tipRow);
}

void drawTaperedCorner(Pencil& d)
{
    const Tool& tool = d.tool;
    const double k = d.taper < 90 ? tangent(45 - d.taper / 2) : 1e-7;
    const double radius = std::min(tool.diameter / (2 * k), tool.radius);
    const int a = trunc(tangent(45 - tool.angle / 2) * radius / d.scale);
    const int rp = trunc(radius / d.scale);
    const int left = d.cx - d.diameterHalf;
    const double angle = tool.angle * pi / 180;
    if (a >= 1)
        d.drawing.moves.push_back({2, left + a - rp, d.tipRow - 2 * rp + 1, left + a + rp,
                                   d.tipRow + 1, left - trunc(a * std::sin(angle)),
                                   d.tipRow - trunc(a * std::cos(angle)), left + a, d.tipRow});
}

void drawRoundCorner(Pencil& d)
{
    const int x = d.cx - d.diameterHalf;
    const int r = trunc(d.tool.radius / d.scale);
    const int y0 = d.tipRow - r + 1;
    d.lineTo(x, y0);
    if (d.tool.isReversed) {
        d.drawing.moves.push_back({3, x - r, y0, x + r, y0 + 2 * r, x + r, d.tipRow, x, y0});
        d.moveTo(x + r, d.tipRow);
    } else {
        d.drawing.moves.push_back({2, x, y0 - r, x + 2 * r, y0 + r, x, y0, x + r, y0 + r});
    }
}

void drawTip(Pencil& d)
{
    if (d.tool.isPointed)
        drawPoint(d);
    else if (d.tool.radius <= 0 || d.tool.radius / d.scale < 2)
        d.lineTo(clamped(d.cx - d.diameterHalf, 0, 32767), d.tipRow);
    else if (d.taper > 0.001)
        drawTaperedCorner(d);
    else
        drawRoundCorner(d);
    d.lineTo(d.cx, d.tipRow);
}

} // namespace

Drawing drawingOf(const torvapdm::ToolArguments& arguments)
{
    const int width = static_cast<int>(arguments.width);
    Pencil pencil{};
    pencil.tool = guarded(arguments);
    applyKind(pencil.tool, arguments.toolType);
    settleLengths(pencil, width, static_cast<int>(arguments.height));
    drawCap(pencil, width);
    drawShankAndShoulder(pencil);
    drawTip(pencil);
    return pencil.drawing;
}

std::vector<int> bodyRun(const std::function<bool(int x, int y)>& isOutline, int top, int width,
                         int height, const Marks& marks)
{
    int x = 0;
    while (x < width / 2 && !isOutline(x, top))
        ++x;
    if (x == width / 2)
        return {};
    int last = top;
    while (last != marks.cap && last != marks.shank && last != marks.shoulder &&
           last + 1 < height && isOutline(x, last + 1) && (x == 0 || !isOutline(x - 1, last + 1)))
        ++last;
    return {x, top, last + 1};
}

std::uint32_t sectionColour(int y, const Marks& marks)
{
    if (y <= marks.cap)
        return 0x080808;
    if (y < marks.shank)
        return 0x008080;
    return y < marks.shoulder ? 0x108010 : 0x801010;
}

std::uint32_t bodyColour(std::uint32_t section, int t, int span)
{
    const double p = std::sin(t * 90.0 / span * pi / 180) * 60;
    return adjusted(section, static_cast<int>(p), -static_cast<int>(p / 40));
}

} // namespace reference

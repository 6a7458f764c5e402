#include "view/view_drawing.h"

#include "core/text.h"
#include "view/gdi_objects.h"
#include "view/memory_picture.h"
#include "view/view_scale.h"
#include "view/view_style.h"

#include <algorithm>
#include <cmath>

namespace standin {

namespace {

// The drawing is made larger by this factor and then reduced, because GDI lines are not
// antialiased.
constexpr int enlargement = 3;
constexpr double marginPixels = 46;

// The enlarged picture and the scale of the part on it.
struct Sheet {
    HDC context;
    RECT area;
    ViewScale scale;
};

HPEN pen(COLORREF colour, double width, int style = PS_SOLID)
{
    return CreatePen(style, static_cast<int>(std::lround(width * enlargement)), colour);
}

void drawPolyline(const Sheet& sheet, const std::vector<ViewPoint>& points)
{
    std::vector<POINT> pixels;
    pixels.reserve(points.size());
    for (const ViewPoint& point : points)
        pixels.push_back({sheet.scale.pixelX(point.x), sheet.scale.pixelY(point.y)});
    Polyline(sheet.context, pixels.data(), static_cast<int>(pixels.size()));
}

// The positions of the grid lines on the sheet, in millimetres.
std::vector<double> gridLines(double from, double to, double distance)
{
    constexpr double mostLines = 400;
    std::vector<double> lines;
    const double first = std::ceil(from / distance);
    const double count = std::min(std::floor(to / distance) - first + 1, mostLines);
    lines.reserve(static_cast<size_t>(std::max(0.0, count)));
    for (int line = 0; line < count; ++line)
        lines.push_back((first + line) * distance);
    return lines;
}

std::vector<double> verticalLines(const RECT& area, const ViewScale& scale, double distance)
{
    return gridLines((area.left - scale.offsetX) / scale.factor,
                     (area.right - scale.offsetX) / scale.factor, distance);
}

std::vector<double> horizontalLines(const RECT& area, const ViewScale& scale, double distance)
{
    return gridLines((scale.offsetY - area.bottom) / scale.factor,
                     (scale.offsetY - area.top) / scale.factor, distance);
}

void drawVertical(const Sheet& sheet, double x)
{
    MoveToEx(sheet.context, sheet.scale.pixelX(x), sheet.area.top, nullptr);
    LineTo(sheet.context, sheet.scale.pixelX(x), sheet.area.bottom);
}

void drawHorizontal(const Sheet& sheet, double y)
{
    MoveToEx(sheet.context, sheet.area.left, sheet.scale.pixelY(y), nullptr);
    LineTo(sheet.context, sheet.area.right, sheet.scale.pixelY(y));
}

void drawGrid(const Sheet& sheet, double distance)
{
    {
        const SelectedObject gridPen(sheet.context, pen(colours::grid, 1));
        for (const double x : verticalLines(sheet.area, sheet.scale, distance))
            drawVertical(sheet, x);
        for (const double y : horizontalLines(sheet.area, sheet.scale, distance))
            drawHorizontal(sheet, y);
    }
    const SelectedObject axisPen(sheet.context, pen(colours::axis, 1));
    drawVertical(sheet, 0);
    drawHorizontal(sheet, 0);
}

void drawStock(const Sheet& sheet, const Shape& stock)
{
    const SelectedObject edge(sheet.context, pen(colours::stockEdge, 1));
    const SelectedObject face(sheet.context, CreateSolidBrush(colours::stock));
    const ViewScale& scale = sheet.scale;
    Rectangle(sheet.context, scale.pixelX(stock.values[0]), scale.pixelY(stock.values[1]),
              scale.pixelX(stock.values[2]), scale.pixelY(stock.values[3]));
}

void drawPaths(const Sheet& sheet, const Part& part)
{
    for (const PartOperation& held : part.operations) {
        const SelectedObject pathPen(sheet.context,
                                     pen(toolColour(held.node.op.tool.toolNumber), 1.3));
        for (const std::vector<ViewPoint>& path : held.paths)
            drawPolyline(sheet, path);
    }
}

void drawCross(const Sheet& sheet, double x, double y)
{
    constexpr long half = 5 * enlargement;
    const long column = sheet.scale.pixelX(x);
    const long row = sheet.scale.pixelY(y);
    MoveToEx(sheet.context, column - half, row, nullptr);
    LineTo(sheet.context, column + half, row);
    MoveToEx(sheet.context, column, row - half, nullptr);
    LineTo(sheet.context, column, row + half);
}

void drawShape(const Sheet& sheet, const Shape& shape)
{
    const std::vector<double>& values = shape.values;
    switch (shape.kind) {
    case Shape::Kind::stock:
        break; // drawn first, below everything else
    case Shape::Kind::line:
        return drawPolyline(sheet, {{values[0], values[1]}, {values[2], values[3]}});
    case Shape::Kind::arc:
        return drawPolyline(sheet,
                            arcPoints(values[0], values[1], values[2], values[3], values[4]));
    case Shape::Kind::circle:
        return drawPolyline(sheet, arcPoints(values[0], values[1], values[2], 0, 360));
    case Shape::Kind::point:
        return drawCross(sheet, values[0], values[1]);
    }
}

void drawSheet(const Sheet& sheet, const Part& part, double distance)
{
    fillArea(sheet.context, sheet.area, colours::paper);
    for (const Shape& shape : part.shapes)
        if (shape.kind == Shape::Kind::stock)
            drawStock(sheet, shape);
    drawGrid(sheet, distance);
    drawPaths(sheet, part);
    const SelectedObject geometryPen(sheet.context, pen(colours::geometry, 2));
    for (const Shape& shape : part.shapes)
        drawShape(sheet, shape);
}

std::wstring millimetres(double value)
{
    const std::string text = decimalText(std::round(value * 1e6) / 1e6 + 0.0);
    return {text.begin(), text.end()};
}

// Labels every second grid line along the lower and the left edge.
void drawGridNumbers(HDC context, const RECT& area, const ViewScale& scale, double distance)
{
    const RECT inside = {0, 0, area.right - area.left, area.bottom - area.top};
    for (const double x : verticalLines(inside, scale, 2 * distance)) {
        const long column = area.left + scale.pixelX(x);
        drawLine(context, millimetres(x), {column - 30, area.bottom - 18, column + 30, area.bottom},
                 TextFont::small, colours::quietText, DT_CENTER);
    }
    for (const double y : horizontalLines(inside, scale, 2 * distance)) {
        const long row = area.top + scale.pixelY(y);
        if (row < area.bottom - 24)
            drawLine(context, millimetres(y), {area.left + 4, row - 8, area.left + 60, row + 8},
                     TextFont::small, colours::quietText);
    }
}

} // namespace

void drawPart(HDC context, const RECT& area, const Part& part)
{
    constexpr double leastGridPixels = 26;
    const int width = std::max(static_cast<int>(area.right - area.left), 1);
    const int height = std::max(static_cast<int>(area.bottom - area.top), 1);
    const MemoryPicture large(width * enlargement, height * enlargement);
    const MemoryPicture small(width, height);
    if (!large.context() || !small.context())
        return;
    const ViewBounds bounds = boundsOf(part);
    const ViewScale scale = scaleFor(bounds, width, height, marginPixels);
    const double distance = gridDistance(scale, leastGridPixels);
    const Sheet sheet = {
        large.context(), large.area(),
        scaleFor(bounds, width * enlargement, height * enlargement, marginPixels * enlargement)};
    drawSheet(sheet, part, distance);
    reducePicture(large, small, enlargement);
    BitBlt(context, area.left, area.top, width, height, small.context(), 0, 0, SRCCOPY);
    drawGridNumbers(context, area, scale, distance);
}

} // namespace standin

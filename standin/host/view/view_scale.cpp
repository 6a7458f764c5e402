#include "view/view_scale.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace standin {

namespace {

constexpr double farthestPixel = 30000;

long toPixel(double value)
{
    if (!std::isfinite(value))
        return 0;
    return std::lround(std::clamp(value, -farthestPixel, farthestPixel));
}

void includeShape(ViewBounds& bounds, const Shape& shape)
{
    const std::vector<double>& values = shape.values;
    switch (shape.kind) {
    case Shape::Kind::stock:
    case Shape::Kind::line:
        bounds.include(values[0], values[1]);
        bounds.include(values[2], values[3]);
        break;
    case Shape::Kind::arc:
    case Shape::Kind::circle:
        bounds.include(values[0] - values[2], values[1] - values[2]);
        bounds.include(values[0] + values[2], values[1] + values[2]);
        break;
    case Shape::Kind::point:
        bounds.include(values[0], values[1]);
        break;
    }
}

} // namespace

void ViewBounds::include(double x, double y)
{
    left = isEmpty ? x : std::min(left, x);
    right = isEmpty ? x : std::max(right, x);
    bottom = isEmpty ? y : std::min(bottom, y);
    top = isEmpty ? y : std::max(top, y);
    isEmpty = false;
}

ViewBounds boundsOf(const Part& part)
{
    ViewBounds bounds;
    for (const Shape& shape : part.shapes)
        includeShape(bounds, shape);
    for (const PartOperation& held : part.operations)
        for (const std::vector<ViewPoint>& path : held.paths)
            for (const ViewPoint& point : path)
                bounds.include(point.x, point.y);
    if (bounds.isEmpty) {
        bounds.include(-50, -50);
        bounds.include(50, 50);
    }
    return bounds;
}

long ViewScale::pixelX(double x) const
{
    return toPixel(offsetX + x * factor);
}

long ViewScale::pixelY(double y) const
{
    return toPixel(offsetY - y * factor);
}

long ViewScale::pixels(double millimetres) const
{
    return toPixel(millimetres * factor);
}

ViewScale scaleFor(const ViewBounds& bounds, double width, double height, double margin)
{
    constexpr double smallestPart = 1e-3; // millimetres
    const double factorX = (width - 2 * margin) / std::max(bounds.width(), smallestPart);
    const double factorY = (height - 2 * margin) / std::max(bounds.height(), smallestPart);
    ViewScale scale;
    scale.factor = std::max(std::min(factorX, factorY), 1e-300);
    scale.offsetX = width / 2 - (bounds.left / 2 + bounds.right / 2) * scale.factor;
    scale.offsetY = height / 2 + (bounds.bottom / 2 + bounds.top / 2) * scale.factor;
    return scale;
}

double gridDistance(const ViewScale& scale, double leastPixels)
{
    const double least = leastPixels / scale.factor;
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= least)
            return step * power;
    return 10 * power;
}

std::vector<ViewPoint> arcPoints(double x, double y, double radius, double from, double to)
{
    constexpr int stepsOfCircle = 120;
    double sweep = std::fmod(to - from, 360.0);
    if (sweep <= 0)
        sweep += 360;
    const int steps = std::max(2, static_cast<int>(sweep / 360 * stepsOfCircle));
    std::vector<ViewPoint> points;
    for (int step = 0; step <= steps; ++step) {
        const double angle = (from + sweep * step / steps) * std::numbers::pi / 180;
        points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
    }
    return points;
}

} // namespace standin

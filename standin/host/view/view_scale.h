// From the part's millimetres to the view's pixels. Plain arithmetic, whatever the part holds.
#pragma once

#include "core/part.h"

#include <vector>

namespace standin {

struct ViewBounds {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    bool isEmpty = true;

    void include(double x, double y);
    double width() const { return right - left; }
    double height() const { return top - bottom; }
};

// Everything of the part that is drawn; a part that draws nothing has a square of 100 mm.
ViewBounds boundsOf(const Part& part);

// A scale that keeps the proportions: pixel = offset + millimetres * factor, y downwards.
struct ViewScale {
    double factor = 1;
    double offsetX = 0;
    double offsetY = 0;

    // Far outside values are cut to what the system's drawing takes.
    long pixelX(double x) const;
    long pixelY(double y) const;
    long pixels(double millimetres) const;
};

// The scale that shows the bounds centred in so many pixels, with a margin.
ViewScale scaleFor(const ViewBounds& bounds, double width, double height, double margin);

// The distance of grid lines, in millimetres: 1, 2 or 5 times a power of ten, at least so many
// pixels apart.
double gridDistance(const ViewScale& scale, double leastPixels);

// A curve as points: an arc from one angle to another, counter-clockwise, in degrees.
std::vector<ViewPoint> arcPoints(double x, double y, double radius, double from, double to);

} // namespace standin

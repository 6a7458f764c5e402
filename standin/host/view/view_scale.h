// Conversion from the part's millimetres to the view's pixels. Pure functions, for any values.
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

// The bounds of everything that is drawn; a square of 100 mm if nothing is.
ViewBounds boundsOf(const Part& part);

// A scale that keeps the proportions: pixel = offset + millimetres * factor, y downwards.
struct ViewScale {
    double factor = 1;
    double offsetX = 0;
    double offsetY = 0;

    // Values far outside are limited to the range of GDI.
    long pixelX(double x) const;
    long pixelY(double y) const;
    long pixels(double millimetres) const;
};

// The scale that centres the bounds in this many pixels, with a margin.
ViewScale scaleFor(const ViewBounds& bounds, double width, double height, double margin);

// The distance of grid lines in millimetres: 1, 2 or 5 times a power of ten, at least `leastPixels`
// on screen.
double gridDistance(const ViewScale& scale, double leastPixels);

// The points of an arc, counter-clockwise, angles in degrees.
std::vector<ViewPoint> arcPoints(double x, double y, double radius, double from, double to);

} // namespace standin

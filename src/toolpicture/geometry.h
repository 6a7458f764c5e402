// The position of a tool in its picture, in pixels. No platform header.
#pragma once

#include "toolpicture/dimensions.h"

namespace torvapdm {

// A picture's size in pixels.
struct PictureSize {
    int width;
    int height;
};

// The most rows of a picture.
constexpr int mostRows = 4096;

// True when a picture of this size can be drawn: at least one pixel, at most `mostRows` rows, and a
// work surface of four times its pixels in less than 2 GB.
bool isPictureSize(std::uint32_t width, std::uint32_t height);

// Rows count from the top, columns from the left. Only the left half is drawn: a half width is a
// distance to the left of the centre column.
struct ToolGeometry {
    double scale; // tool units per pixel
    int centreColumn;
    int capHalf;
    int shankHalf;
    int fluteHalf; // of the flutes' upper end, with the taper
    int diameterHalf;
    int tipRow; // of a tool that is not pointed
};

// Tool units per pixel, chosen so that the tool's longer side nearly fills the picture's shorter
// side (or 1,000 pixels of it).
double toolScale(const ToolDimensions& tool, PictureSize picture);

ToolGeometry toolGeometry(const ToolDimensions& tool, PictureSize picture);

// True when every dimension is finite, and the scale is finite and above 0. Only such a tool has a
// picture.
bool isDrawable(const ToolDimensions& tool, double scale);

} // namespace torvapdm

// Where a tool lies in its picture, in pixels. No platform header: these are decisions.
#pragma once

#include "toolpicture/dimensions.h"

namespace torvapdm {

// A picture's size in pixels.
struct PictureSize {
    int width;
    int height;
};

// The rows that a picture can have at most.
constexpr int mostRows = 4096;

// True when a picture of this size can be drawn: it has a pixel, no more than `mostRows` rows, and
// a work surface of four times its pixels that a bitmap of less than 2 GB can hold.
bool isPictureSize(std::uint32_t width, std::uint32_t height);

// Rows count from the top, columns from the left. Only the left half is drawn: a half width is the
// distance to the left of the centre column.
struct ToolGeometry {
    double scale; // the tool's units in one pixel
    int centreColumn;
    int capHalf;
    int shankHalf;
    int fluteHalf; // of the flutes' upper end, with the taper
    int diameterHalf;
    int tipRow; // of a tool that is not pointed
};

// The tool's units in one pixel: the tool's longer side fills nearly the whole of the picture's
// shorter one, as far as 1,000 pixels.
double toolScale(const ToolDimensions& tool, PictureSize picture);

ToolGeometry toolGeometry(const ToolDimensions& tool, PictureSize picture);

// True when every dimension is a finite number and so is the scale, which is above 0. Only such a
// tool has a picture.
bool isDrawable(const ToolDimensions& tool, double scale);

} // namespace torvapdm

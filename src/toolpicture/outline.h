// The outline of a tool's left half, as the moves that draw it. No platform header: these are
// decisions.
#pragma once

#include "toolpicture/geometry.h"

#include <vector>

namespace torvapdm {

struct PixelPoint {
    int x;
    int y;
};

// One call on the picture's device. A line leaves out its last pixel. An arc is the part of the
// ellipse in the box that runs counter-clockwise from `start` to `end`, which give its two ends as
// seen from the box's centre; arcTo draws a line to it first and moves on to its end, arc leaves
// the present position alone.
struct OutlineMove {
    enum class Kind { moveTo, lineTo, arcTo, arc };

    Kind kind;
    PixelPoint to;         // of moveTo and lineTo
    PixelPoint boxTopLeft; // of an arc
    PixelPoint boxBottomRight;
    PixelPoint start;
    PixelPoint end;
};

// The rows in which the cap, the shank and the shoulder end; none lies above the one before it.
// What is below the last is flutes and tip.
struct SectionMarks {
    int cap;
    int shank;
    int shoulder;
};

struct ToolOutline {
    std::vector<OutlineMove> moves;
    SectionMarks marks;
};

// From the cap, along shank, shoulder and flutes, to the middle of the tip.
ToolOutline toolOutline(const ToolDimensions& tool, const ToolGeometry& geometry);

// True when the graphics calls can draw every move: each point lies nearer than the farthest pixel
// and each arc's box within 32,767 pixels of the picture's corner.
bool canBeDrawn(const ToolOutline& outline);

} // namespace torvapdm
